#pragma once

namespace vok {

/// Starts the program at the absolute `path` with no argument and an empty environment, and neither waits for
/// it nor learns whether it started: a child that cannot execute it ends with status 0.
void RunProcess(const char* path);

}  // namespace vok
