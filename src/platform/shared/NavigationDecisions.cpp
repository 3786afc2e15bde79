#include "platform/shared/NavigationDecisions.h"

#include "platform/WebView.h"
#include "platform/Workspace.h"
#include "platform/shared/OtherPrograms.h"

namespace vok {

namespace {

struct DecisionListener final : WebPolicyDecisionListener {
    void use() override { isAllowed = true; }
    bool isAllowed = false;
};

bool isAllowed(WebView& view, WebPolicyDelegate& policy, const std::string& url) {
    DecisionListener listener;
    policy.webViewDecidePolicyForNavigationAction(view, url, listener);
    return listener.isAllowed;
}

}  // namespace

bool allowsNavigation(WebView& view, WebPolicyDelegate& policy, Workspace& workspace, const std::string& url,
                      bool isApplicationLoad) {
    if (!isAllowed(view, policy, url))
        return false;
    if (isApplicationLoad || isLoadedByWebView(url) || policy.webViewIsCommandURL(url))
        return true;
    workspace.openURL(url);
    return false;
}

void requestNewWindow(WebView& sender, WebUIDelegate& ui, WebPolicyDelegate& policy, const std::string& url) {
    auto& target = ui.webViewCreateWebViewWithRequest(sender, url);
    if (isAllowed(target, policy, url))
        target.mainFrame().loadRequest(url);
}

}  // namespace vok
