#include "platform/Log.h"

#include <cstdio>
#include <syslog.h>

namespace vok {

/// To syslog, with a copy on standard error.
void writeLogLine(const std::string& line) noexcept {
    syslog(LOG_USER | LOG_INFO, "%s", line.c_str());
    std::fprintf(stderr, "%s\n", line.c_str());
}

}  // namespace vok
