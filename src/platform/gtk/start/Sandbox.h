#pragma once

#include <string>

namespace vok {

/// Whether this system blocks the web view's sandbox. WebKitGTK runs its processes in namespaces made by
/// bubblewrap, and ends the program where that fails.
bool sandboxForbidden();

/// What the user is told then, with the setting that an administrator has to change; in the language in use.
std::string sandboxAdvice();

}  // namespace vok
