#pragma once

#include "foundation/StringWithFormat.h"

namespace vok {

/// Writes one line of UTF-8 text to the system log, at any time and on any thread. Defined by the linked
/// backend; a line that cannot be written is dropped.
void writeLogLine(const std::string& line) noexcept;

/// A shell command that shows these lines. Defined by the linked backend.
std::string logCommand();

/// Writes one line, `format` filled by StringWithFormat, to the system log.
template <class... Arguments>
void Log(std::string_view format, const Arguments&... arguments) {
    writeLogLine(StringWithFormat(format, arguments...));
}

}  // namespace vok
