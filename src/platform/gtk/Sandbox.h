#pragma once

namespace vok {

/// The web view keeps its processes in namespaces of their own, made by bubblewrap, and ends the program
/// where the system forbids that. Is this such a system? Takes no time unless it has a rule about namespaces.
bool sandboxForbidden();

}  // namespace vok
