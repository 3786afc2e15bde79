#pragma once

#include <optional>
#include <string>

namespace vok {

class Bundle;

/// What the program prints, instead of opening its window, when its only argument is "--help" or "--version".
/// Nothing for any other arguments: they have no effect.
std::optional<std::string> commandLineAnswer(int argc, const char* const argv[], const Bundle& bundle);

}  // namespace vok
