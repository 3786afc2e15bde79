#pragma once

#include <string>

namespace vok {

/// Writes one line of UTF-8 text to the system log, at any time and on any thread. Defined by the linked
/// backend; a line that cannot be written is lost silently.
void writeLogLine(const std::string& line) noexcept;

}  // namespace vok
