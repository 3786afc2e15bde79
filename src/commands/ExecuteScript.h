#pragma once

#include <optional>
#include <string>

namespace vok {

/// Runs one command line with the system shell and returns when that shell has ended. Raises
/// NSInvalidArgumentException when `script` is nil, and NSGenericException with the wait status, not decoded,
/// when it is not 0 (-1: no shell could be started).
void ExecuteScript(const std::optional<std::string>& script);

}  // namespace vok
