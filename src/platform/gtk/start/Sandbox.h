#pragma once

namespace vok {

/// Does this system forbid the web view's sandbox? WebKitGTK runs its processes in namespaces made by
/// bubblewrap, and ends the program where that fails.
bool sandboxForbidden();

/// What the user is told then.
extern const char* const sandboxRefusal;

}  // namespace vok
