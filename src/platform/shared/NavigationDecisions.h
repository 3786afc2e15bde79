#pragma once

#include <string>

namespace vok {

class WebPolicyDelegate;
class WebUIDelegate;
class WebView;
class Workspace;

/// Whether the default browser can fetch `url`, which a page has requested by that HTTP method. It cannot
/// send the page's form, nor read a "blob:" or "data:" URL.
bool canBrowserFetch(const std::string& url, const std::string& method);

/// Whether a response with these headers is a file to download. A PDF is one: the engine's viewer would fill
/// the window and leave no way back.
bool isFile(const std::string& mimeType, const std::string& contentDisposition);

/// Asks `policy` about a navigation of `view` and returns whether the view follows it. A URL that the
/// view cannot load is opened by the desktop instead, unless the application has requested it or it is a
/// command URL: those fail in the view.
bool allowsNavigation(WebView& view, WebPolicyDelegate& policy, Workspace& workspace, const std::string& url,
                      bool isApplicationLoad);

/// Asks `ui` for a view when a page of `sender` opens a window for `url`, loaded there if `policy` allows.
void requestNewWindow(WebView& sender, WebUIDelegate& ui, WebPolicyDelegate& policy, const std::string& url);

}  // namespace vok
