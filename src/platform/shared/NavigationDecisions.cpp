#include "platform/shared/NavigationDecisions.h"

#include "platform/WebView.h"
#include "platform/Workspace.h"

#include <Poco/String.h>

#include <algorithm>
#include <initializer_list>

namespace vok {

namespace {

bool hasScheme(const std::string& url, const std::string& scheme) {
    return Poco::icompare(url, 0, scheme.size(), scheme) == 0 && url.substr(scheme.size(), 1) == ":";
}

/// Others, such as "mailto:", open in another program.
bool isLoadedByWebView(const std::string& url) {
    const auto schemes = {"https", "http", "file", "about", "data", "blob", "javascript"};
    return std::any_of(schemes.begin(), schemes.end(),
                       [&](const char* scheme) { return hasScheme(url, scheme); });
}

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

bool canBrowserFetch(const std::string& url, const std::string& method) {
    return method == "GET" && (hasScheme(url, "https") || hasScheme(url, "http"));
}

bool isFile(const std::string& mimeType, const std::string& contentDisposition) {
    const std::string attachment = "attachment";
    return Poco::icompare(mimeType, "application/pdf") == 0 ||
           Poco::icompare(Poco::trimLeft(contentDisposition), 0, attachment.size(), attachment) == 0;
}

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
