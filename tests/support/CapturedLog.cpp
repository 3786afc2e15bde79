#include "foundation/Log.h"
#include "support/InstallerTest.h"

static std::vector<std::string> lines;

void vok::writeLogLine(const std::string& line) noexcept { lines.push_back(line); }

std::vector<std::string> vok::test::takeLog() { return std::exchange(lines, {}); }
