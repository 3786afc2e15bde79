#pragma once

#include <string>

/// Writes a line to standard error, and to the system log under the name of the installer: "vok-installer".
void logFailure(const std::string& line);
