#pragma once

#include <array>
#include <concepts>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace vok {

/// One argument of a format: a string, nil, or an integer.
using FormatArgument = std::variant<std::nullptr_t, std::string_view, int>;

inline FormatArgument formatArgument(int number) { return number; }
inline FormatArgument formatArgument(std::string_view text) { return text; }
template <std::same_as<std::optional<std::string>> Text>
FormatArgument formatArgument(const Text& text) {
    return text ? FormatArgument(std::string_view(*text)) : FormatArgument(nullptr);
}

/// Fills the placeholders of `format` with `arguments` in order.
/// %@ and %s take a string (nil gives "(null)"), %d an integer; any other "%" stands for itself, and so does
/// every "%" inside an argument. Throws std::logic_error when placeholders and arguments do not match.
std::string FormatArguments(std::string_view format, std::span<const FormatArgument> arguments);

/// The same for arguments given directly: std::string, std::optional<std::string>, C strings and int.
template <class... Arguments>
std::string StringWithFormat(std::string_view format, const Arguments&... arguments) {
    const std::array<FormatArgument, sizeof...(arguments)> list{formatArgument(arguments)...};
    return FormatArguments(format, list);
}

}  // namespace vok
