#pragma once

#include <string>

namespace vok {

class WebPolicyDelegate;
class WebUIDelegate;
class WebView;
class Workspace;

/// Asks `policy` about a navigation of `view` and returns whether the view follows it. An address that the
/// view cannot load is handed to the desktop instead, unless the application has asked for it or it is a
/// command URL: those fail in the view.
bool allowsNavigation(WebView& view, WebPolicyDelegate& policy, Workspace& workspace, const std::string& url,
                      bool isApplicationLoad);

/// Reports that a page of `sender` wants a window of its own for `url`. The view that `ui` names loads the
/// URL if `policy` allows it.
void requestNewWindow(WebView& sender, WebUIDelegate& ui, WebPolicyDelegate& policy, const std::string& url);

}  // namespace vok
