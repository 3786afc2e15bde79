#pragma once

#include <string>

namespace vok {

// What a web view leaves to other programs of the desktop.

/// Does the web view load addresses with the scheme of `url`? Others, such as "mailto:", have programs of
/// their own.
bool isLoadedByWebView(const std::string& url);

/// Can the default browser fetch what a page got from `url` by a request of that HTTP method? It has neither
/// this window's forms nor what exists in its memory only.
bool canBrowserFetch(const std::string& url, const std::string& method);

/// Is an answer with these headers a file and no page? A PDF is one: the engine would fill the window with
/// its viewer and leave no way back.
bool isFile(const std::string& mimeType, const std::string& contentDisposition);

}  // namespace vok
