#pragma once

#include <optional>
#include <string>

namespace vok {

class Bundle;

/// What the program prints, instead of opening its window, when its only argument is "--help" or "--version".
/// Nothing for any other arguments: they have no effect. `log` is the command that shows the log.
std::optional<std::string> commandLineAnswer(int argc, const char* const argv[], const Bundle& bundle,
                                             const std::string& log);

}  // namespace vok
