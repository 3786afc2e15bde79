#pragma once

#include <optional>
#include <string>

namespace vok {

class Bundle;

/// What the program prints in place of its window if its only argument is "--help" or "--version".
std::optional<std::string> commandLineAnswer(int argc, const char* const argv[], const Bundle& bundle);

}  // namespace vok
