// Which navigations the web view follows, and which answers it shows.
#include "platform/gtk/web/WebKitView.h"

#include "platform/gtk/web/PageDialogs.h"

#include <utility>

namespace vok {

namespace {

std::string requestURL(WebKitNavigationAction* action) {
    return webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
}

std::string contentDisposition(WebKitURIResponse* response) {
    SoupMessageHeaders* const headers = webkit_uri_response_get_http_headers(response);
    const char* const value =
        headers ? soup_message_headers_get_one(headers, "Content-Disposition") : nullptr;
    return value ? value : "";
}

}  // namespace

std::string WebKitView::normalisedRequest() const {
    const GObjectPtr<WebKitURIRequest> request(webkit_uri_request_new(requestedURL.c_str()));
    return webkit_uri_request_get_uri(request.get());
}

bool WebKitView::onDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
    switch (type) {
    case WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION:
        onNavigation(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
        return true;
    case WEBKIT_POLICY_DECISION_TYPE_RESPONSE:
        return onResponse(WEBKIT_RESPONSE_POLICY_DECISION(decision));
    default:
        return false;  // "create" follows for a new window, whose own view asks for the decision
    }
}

/// Cancels navigation by a page that the error page is about to replace, as its load would be taken for that
/// of the error page; and by the start page while a page loads that the application has requested.
void WebKitView::onNavigation(WebKitNavigationPolicyDecision* decision) {
    WebKitNavigationAction* const action = webkit_navigation_policy_decision_get_navigation_action(decision);
    const auto type = webkit_navigation_action_get_navigation_type(action);
    const auto url = isStartURL(requestedURL) ? normalisedRequest() : requestURL(action);
    if (errorPageRequested && requestedURL.empty()) {
        webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
        return;
    }
    if (showsStartPage && !requestedURL.empty() && !webkit_navigation_action_is_redirect(action) &&
        url != normalisedRequest()) {
        webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
        return;
    }
    const bool sendsForm = type == WEBKIT_NAVIGATION_TYPE_FORM_RESUBMITTED;
    const bool reloads =
        (type == WEBKIT_NAVIGATION_TYPE_RELOAD || sendsForm) && std::exchange(reloadRequested, false);
    if (reloads && (sendsForm || policyDelegate->webViewIsCommandURL(url))) {
        webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
        if (!policyDelegate->webViewIsCommandURL(url))
            loadRequest(url);
        return;
    }
    if (allowsNavigation(*this, *policyDelegate, workspace, url, !requestedURL.empty()))
        webkit_policy_decision_use(WEBKIT_POLICY_DECISION(decision));
    else
        webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
}

bool WebKitView::onResponse(WebKitResponsePolicyDecision* decision) {
    if (!webkit_response_policy_decision_is_main_frame_main_resource(decision))
        return false;
    answerWait.end();
    WebKitURIResponse* const response = webkit_response_policy_decision_get_response(decision);
    const std::string url = webkit_uri_response_get_uri(response);
    const auto reason = reasonNotToShow(url, decision);
    if (!reason)
        return false;
    webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
    if (requestedURL.empty())
        openInBrowser(url, webkit_response_policy_decision_get_request(decision), *reason);
    else
        showErrorPage(url, *reason);
    return true;
}

std::optional<FailureReason> WebKitView::reasonNotToShow(const std::string& url,
                                                         WebKitResponsePolicyDecision* decision) const {
    if (!policyDelegate->webViewMayShowPage(url))
        return texts::addressNotAllowed;
    WebKitURIResponse* const response = webkit_response_policy_decision_get_response(decision);
    const std::string type = webkit_uri_response_get_mime_type(response);
    if (!webkit_response_policy_decision_is_mime_type_supported(decision))
        return FailureReason(texts::typeNotSupported, type);
    if (isFile(type, contentDisposition(response)))
        return texts::isDownload;
    return std::nullopt;
}

void WebKitView::openInBrowser(const std::string& url, WebKitURIRequest* request,
                               const FailureReason& reason) {
    const char* const method = webkit_uri_request_get_http_method(request);  // null for "blob:"
    if (policyDelegate->webViewIsCommandURL(url))
        showErrorPage(url, reason);
    else if (method && canBrowserFetch(url, method))
        workspace.openURL(url);
    else
        showSheet(messageFor(view.get(),
                             translated(policyDelegate->webViewMayShowPage(url) ? texts::fileOfThisWindow
                                                                                : texts::addressNotAllowed)));
}

}  // namespace vok
