#include "foundation/PercentEscapes.h"

#include <Poco/UTF8Encoding.h>

#include <algorithm>
#include <array>
#include <charconv>

namespace vok {

namespace {

constexpr std::string_view unescapedCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"
    "-_.!~*'();/?:@&=+$,";

constexpr auto staysUnescaped = [] {
    std::array<bool, 256> table{};
    for (const char character : unescapedCharacters)
        table[static_cast<unsigned char>(character)] = true;
    return table;
}();

bool isUtf8(std::string_view text) {
    const Poco::UTF8Encoding utf8;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    const auto* const end = bytes + text.size();
    while (bytes != end) {
        const int available = static_cast<int>(std::min<std::ptrdiff_t>(end - bytes, 4));
        const int length = utf8.sequenceLength(bytes, available);
        if (length < 1 || length > available || !Poco::UTF8Encoding::isLegal(bytes, length))
            return false;
        bytes += length;
    }
    return true;
}

}  // namespace

std::string AddPercentEscapes(std::string_view text) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    escaped.reserve(text.size());
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        if (staysUnescaped[byte])
            escaped += character;
        else
            escaped.append({'%', digits[byte >> 4], digits[byte & 15]});
    }
    return escaped;
}

std::optional<std::string> RemovePercentEscapes(std::string_view text) {
    std::string unescaped;
    unescaped.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            unescaped += text[i];
            continue;
        }
        if (text.size() - i < 3)
            return std::nullopt;
        const char* const digits = text.data() + i + 1;
        unsigned char byte = 0;
        if (std::from_chars(digits, digits + 2, byte, 16).ptr != digits + 2)
            return std::nullopt;
        unescaped += static_cast<char>(byte);
        i += 2;
    }
    if (!isUtf8(unescaped))
        return std::nullopt;
    return unescaped;
}

}  // namespace vok
