#pragma once

#include <webkit/webkit.h>

namespace vok {

/// Refuses files and links from other programs that are dropped on `pages`, unless the page or a field takes
/// them. WebKitGTK loads them in place of the page, where one could run a command.
void refuseDrops(WebKitUserContentManager* pages);

}  // namespace vok
