#pragma once

#include "platform/gtk/support/Signal.h"

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace vok {

/// Notices links of pages to addresses that WebKitGTK never asks for: blocked ports, and 0.0.0.0. It ignores
/// a click on one without a signal, so that a script on each page looks at the clicks.
class RefusedLinks {
public:
    /// `onClick` is called with the address of such a link in the main frame of a page in `view`.
    RefusedLinks(WebKitWebView* view, std::function<void(const std::string& url)> onClick);

private:
    SignalConnection clicked;
};

}  // namespace vok
