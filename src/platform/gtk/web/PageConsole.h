#pragma once

#include "platform/gtk/support/Signal.h"

#include <webkit/webkit.h>

namespace vok {

/// Prints `console` calls and uncaught errors of all frames to standard output, while the connection exists:
/// for each a line "URL:LINE:COLUMN: LEVEL: TEXT", with control characters escaped and without the URL's
/// query. WebKitGTK's own setting for this has no effect in an ephemeral session.
SignalConnection printPageConsole(WebKitUserContentManager* pages);

}  // namespace vok
