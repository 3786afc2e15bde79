#include "foundation/PercentEscapes.h"

#include <Poco/UTF8Encoding.h>

#include <algorithm>
#include <array>

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

constexpr auto hexadecimalValue = [] {
    std::array<signed char, 256> table{};
    table.fill(-1);
    for (const char* const digits : {"0123456789ABCDEF", "0123456789abcdef"})
        for (signed char value = 0; value < 16; ++value)
            table[static_cast<unsigned char>(digits[value])] = value;
    return table;
}();

int valueOf(char digit) { return hexadecimalValue[static_cast<unsigned char>(digit)]; }

/// Checks all bytes without a branch, which is many times faster than stopping at the first.
bool isAscii(std::string_view text) {
    unsigned char bits = 0;
    for (const char character : text)
        bits |= static_cast<unsigned char>(character);
    return bits < 0x80;
}

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

bool RemovePercentEscapes(std::string& text) {
    if (const auto first = text.find('%'); first != std::string::npos) {
        char* out = text.data() + first;
        const char* const end = text.data() + text.size();
        for (const char* in = out; in != end; ++out) {
            if (*in != '%') {
                *out = *in++;
                continue;
            }
            if (end - in < 3 || valueOf(in[1]) < 0 || valueOf(in[2]) < 0)
                return false;
            *out = static_cast<char>(valueOf(in[1]) * 16 + valueOf(in[2]));
            in += 3;
        }
        text.resize(static_cast<std::size_t>(out - text.data()));
    }
    return isAscii(text) || isUtf8(text);
}

}  // namespace vok
