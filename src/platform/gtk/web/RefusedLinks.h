#pragma once

#include "platform/gtk/support/Signal.h"

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace vok {

/// Detects clicks on links that WebKitGTK never requests: restricted ports, and 0.0.0.0. WebKitGTK ignores
/// such a click without a signal, so a script in each page watches the clicks.
class RefusedLinks {
public:
    /// `onClick` is called with the URL of such a link in the main frame of a page in `view`.
    RefusedLinks(WebKitWebView* view, std::function<void(const std::string& url)> onClick);

private:
    SignalConnection clicked;
};

}  // namespace vok
