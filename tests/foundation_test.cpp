#include "foundation/PercentEscapes.h"
#include "foundation/StringWithFormat.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

namespace vok {

using namespace std::string_literals;

TEST(StringWithFormat, PutsArgumentsInPlaceOfPlaceholders) {
    const std::optional<std::string> nil;
    EXPECT_EQ(StringWithFormat("%@-%s-%d, 50% of %x%", "a"s, "b", -7), "a-b--7, 50% of %x%");
    EXPECT_EQ(StringWithFormat("<%@><%s><%@>", nil, nil, std::optional("x"s)), "<(null)><(null)><x>");
    EXPECT_EQ(StringWithFormat("%@|%@", "%@ %d 100%", "\0z"s), "%@ %d 100%|\0z"s);
    EXPECT_THROW(StringWithFormat("%@"), std::logic_error);
    EXPECT_THROW(StringWithFormat("a", "b"), std::logic_error);
    EXPECT_THROW(StringWithFormat("%d", "1"), std::logic_error);
    EXPECT_THROW(StringWithFormat("%s", 1), std::logic_error);
}

std::optional<std::string> unescaped(std::string text) {
    return RemovePercentEscapes(text) ? std::optional(std::move(text)) : std::nullopt;
}

TEST(PercentEscapes, EveryByteStaysOrBecomesItsEscape) {
    const auto kept = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_.!~*'();/?:@&=+$,"s;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        char escape[4];
        std::snprintf(escape, sizeof escape, "%%%02X", static_cast<unsigned>(byte));
        EXPECT_EQ(AddPercentEscapes(text), kept.find(text) != kept.npos ? text : escape);
        EXPECT_EQ(unescaped(escape), byte < 0x80 ? std::optional(text) : std::nullopt) << byte;
    }
}

TEST(PercentEscapes, OnlyWholeEscapesOfUtf8AreUnescaped) {
    EXPECT_EQ(unescaped(""), "");
    EXPECT_EQ(unescaped("a+b%2b%2B%2541"), "a+b++%41");
    EXPECT_EQ(unescaped("\xC3\xB6%C3%b6"), "öö");
    EXPECT_EQ(unescaped("%7F%C2%80%DF%BF%E0%A0%80"), "\x7F\u0080\u07FF\u0800");
    EXPECT_EQ(unescaped("%ED%9F%BF%EE%80%80%EF%BF%BF"), "\uD7FF\uE000\uFFFF");
    EXPECT_EQ(unescaped("%F0%90%80%80%F4%8F%BF%BF"), "\U00010000\U0010FFFF");
    EXPECT_EQ(unescaped(std::string("%41", 2)), std::nullopt);
    const std::pair<const char*, std::vector<const char*>> refused[] = {
        {"malformed", {"%", "a%4", "%4g", "%g4", "%%41", "% 41", "%+4", "%-4", "%0x41"}},
        {"truncated", {"%C3", "%C3a%B6", "%E2%82", "%F0%9F%98", "\xFC"}},
        {"overlong", {"%C0%80", "%C1%BF", "%E0%9F%BF", "%F0%8F%BF%BF"}},
        {"no character", {"%ED%A0%80", "%ED%BF%BF", "%F4%90%80%80", "%F8%88%80%80%80"}},
    };
    for (const auto& [name, list] : refused)
        for (const auto escaped : list)
            EXPECT_EQ(unescaped(escaped), std::nullopt) << name << ": " << escaped;
}

}  // namespace vok
