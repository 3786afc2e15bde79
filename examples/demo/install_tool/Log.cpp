#include "Log.h"

#include <iostream>
#include <syslog.h>

void logFailure(const std::string& line) {
    const auto text = "demo-install-tool: " + line;
    std::cerr << text << '\n';
    openlog("vok-installer", 0, LOG_USER);
    syslog(LOG_ERR, "%s", text.c_str());
}
