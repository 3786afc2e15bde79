#pragma once

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace vok {

/// The page that `view` has just loaded may be the answer of an error, such as 404, without a word in it.
/// Calls `tell` then, a little later, with its address and the reason, unless the view has gone on.
void findEmptyErrorResponse(WebKitWebView* view,
                            std::function<void(const char* url, const std::string& reason)> tell);

}  // namespace vok
