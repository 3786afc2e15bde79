#pragma once

#include "platform/shared/ErrorPage.h"

#include <webkit/webkit.h>

#include <functional>

namespace vok {

/// Calls `tell` with URL and reason, a little later, if the page that `view` has just loaded is an HTTP
/// error, such as 404, with an empty body, and no other load has begun.
void findEmptyErrorResponse(WebKitWebView* view,
                            std::function<void(const char* url, const FailureReason&)> tell);

}  // namespace vok
