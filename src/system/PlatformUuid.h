#pragma once

#include <string>

namespace vok {

class Machine;

/// The machine's platform UUID; "(null)" when it cannot be read.
std::string GetPlatformUuid(const Machine& machine);

}  // namespace vok
