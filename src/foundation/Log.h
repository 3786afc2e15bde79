#pragma once

#include "foundation/StringWithFormat.h"
#include "platform/Log.h"

namespace vok {

/// Writes one line, `format` filled by StringWithFormat, to the system log.
template <class... Arguments>
void Log(std::string_view format, const Arguments&... arguments) {
    writeLogLine(StringWithFormat(format, arguments...));
}

}  // namespace vok
