#pragma once

#include <string>

namespace vok {

// Which URLs are opened in other programs of the desktop.

/// Whether the web view loads URLs with the scheme of `url`. Others, such as "mailto:", open in another
/// program.
bool isLoadedByWebView(const std::string& url);

/// Whether the default browser can fetch `url`, which a page has requested by that HTTP method. It cannot
/// send the page's form, nor read a "blob:" or "data:" URL.
bool canBrowserFetch(const std::string& url, const std::string& method);

/// Whether a response with these headers is a file to download. A PDF is one: the engine's viewer would fill
/// the window and leave no way back.
bool isFile(const std::string& mimeType, const std::string& contentDisposition);

}  // namespace vok
