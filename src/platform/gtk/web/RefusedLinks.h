#pragma once

#include "platform/gtk/support/Signal.h"

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace vok {

/// Detects clicks on links that WebKitGTK never requests: restricted ports, and 0.0.0.0. WebKitGTK ignores
/// such a click without a signal, so a script in each page watches the clicks.
/// While the connection exists, calls `onClick` with the URL of such a link in the main frame of `view`.
SignalConnection watchRefusedLinks(WebKitWebView* view, std::function<void(const std::string& url)> onClick);

}  // namespace vok
