#pragma once

namespace vok {

/// Starts the program at the absolute `path` with no arguments and an empty environment, and does not wait
/// for it. Failure is not reported: a child that cannot execute it ends with status 0.
void RunProcess(const char* path);

}  // namespace vok
