#pragma once

namespace vok {

/// The web view keeps its processes in namespaces of their own, made by bubblewrap, and ends the program
/// where the system forbids that. Is this such a system?
bool sandboxForbidden();

}  // namespace vok
