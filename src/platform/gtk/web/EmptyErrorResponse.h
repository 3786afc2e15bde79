#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace vok {

/// Calls `tell` with address and reason, a little later, if the page that `view` has just loaded is an HTTP
/// error with an empty body and is still there.
void findEmptyErrorResponse(WebKitWebView* view,
                            std::function<void(const char* url, const std::string& reason)> tell);

}  // namespace vok
