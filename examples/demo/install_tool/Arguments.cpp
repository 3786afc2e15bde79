#include "Arguments.h"

#include <stdexcept>
#include <string_view>

Arguments::Arguments(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (const auto equals = argument.find('='); equals != std::string_view::npos)
            values[std::string(argument.substr(0, equals))] = argument.substr(equals + 1);
    }
}

std::optional<std::string> Arguments::find(const std::string& name) const {
    const auto value = values.find(name);
    return value == values.end() ? std::nullopt : std::optional(value->second);
}

std::string Arguments::get(const std::string& name) const {
    const auto value = find(name);
    if (!value)
        throw std::runtime_error("The argument '" + name + "' is missing.");
    return *value;
}
