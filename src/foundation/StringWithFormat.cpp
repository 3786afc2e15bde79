#include "foundation/StringWithFormat.h"

#include <stdexcept>

namespace vok {

namespace {

std::string textOf(const FormatArgument& argument, char placeholder) {
    if (const int* number = std::get_if<int>(&argument); number && placeholder == 'd')
        return std::to_string(*number);
    if (const auto* text = std::get_if<std::string_view>(&argument); text && placeholder != 'd')
        return std::string(*text);
    if (std::holds_alternative<std::nullptr_t>(argument) && placeholder != 'd')
        return "(null)";
    throw std::logic_error("StringWithFormat: an argument does not fit its placeholder.");
}

}  // namespace

std::string FormatArguments(std::string_view format, std::span<const FormatArgument> arguments) {
    std::string result;
    auto argument = arguments.begin();
    for (std::size_t i = 0; i < format.size(); ++i) {
        const bool placeholder = format[i] == '%' && i + 1 < format.size() &&
                                 std::string_view("@ds").find(format[i + 1]) != std::string_view::npos;
        if (!placeholder) {
            result += format[i];
            continue;
        }
        if (argument == arguments.end())
            throw std::logic_error("StringWithFormat: too few arguments.");
        result += textOf(*argument++, format[++i]);
    }
    if (argument != arguments.end())
        throw std::logic_error("StringWithFormat: too many arguments.");
    return result;
}

}  // namespace vok
