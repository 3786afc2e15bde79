#include "foundation/Log.h"

#include "platform/gtk/support/ZeroBytes.h"

#include <cerrno>
#include <cstdio>
#include <new>
#include <syslog.h>

namespace vok {

/// To syslog, with a copy on standard error.
void writeLogLine(const std::string& line) noexcept try {
    const auto text = withoutZeroBytes(line);
    syslog(LOG_USER | LOG_INFO, "%s", text.c_str());
    std::fprintf(stderr, "%s\n", text.c_str());
} catch (const std::bad_alloc&) {
    // A line that cannot be written is dropped.
}

/// syslog() uses the name by which the program was started.
std::string logCommand() { return std::string("journalctl -t ") + program_invocation_short_name; }

}  // namespace vok
