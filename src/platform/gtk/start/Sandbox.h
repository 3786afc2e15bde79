#pragma once

#include <string>

namespace vok {

/// Whether this system blocks the web view's sandbox. WebKitGTK runs its processes in namespaces that
/// bubblewrap creates, and ends the program if that fails.
bool sandboxForbidden();

/// The message for the user then, translated, with the setting that an administrator has to change.
std::string sandboxAdvice();

}  // namespace vok
