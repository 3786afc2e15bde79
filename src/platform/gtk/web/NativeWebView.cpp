#include "platform/gtk/web/NativeWebView.h"

#include "foundation/Log.h"
#include "platform/gtk/support/ZeroBytes.h"
#include "platform/gtk/web/EmptyErrorResponse.h"
#include "platform/gtk/web/LoadErrors.h"
#include "platform/gtk/web/PageDialogs.h"
#include "platform/shared/FailurePage.h"
#include "platform/shared/OtherPrograms.h"

#include <Poco/String.h>

#include <utility>

namespace vok {

namespace {

struct SessionStateUnref {
    void operator()(WebKitWebViewSessionState* state) const { webkit_web_view_session_state_unref(state); }
};

constexpr auto blankPage = "about:blank";
const std::string script = "javascript:";

std::string requestURL(WebKitNavigationAction* action) {
    return webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
}

/// `url` as the engine writes it.
std::string normalised(const std::string& url) {
    const GObjectPtr<WebKitURIRequest> request(webkit_uri_request_new(url.c_str()));
    return webkit_uri_request_get_uri(request.get());
}

struct DecisionListener final : WebPolicyDecisionListener {
    void use() override { isAllowed = true; }
    bool isAllowed = false;
};

std::string contentDisposition(WebKitURIResponse* response) {
    SoupMessageHeaders* const headers = webkit_uri_response_get_http_headers(response);
    const char* const value =
        headers ? soup_message_headers_get_one(headers, "Content-Disposition") : nullptr;
    return value ? value : "";
}

}  // namespace

NativeWebView::NativeWebView(NativeWebViewOwner& viewOwner, const WebKitSession& session)
    : owner(viewOwner), view(session.makeView()),
      answerWait([this] { showFailurePage(loadingURL(), texts::noAnswer); },
                 [this] { showFailurePage(loadingURL(), texts::passwordRequired); }),
      refusedLinks(view.get(),
                   [this](const std::string& url) { showFailurePage(url, texts::addressNotAllowed); }) {
    bindSignals();
}

void NativeWebView::bindSignals() {
    connections.push_back(connect<void(WebKitLoadEvent)>(
        view.get(), "load-changed", [this](WebKitLoadEvent event) { onLoadChanged(event); }));
    connections.push_back(connect<gboolean(WebKitLoadEvent, const char*, GError*)>(
        view.get(), "load-failed", [this](WebKitLoadEvent, const char* url, GError* error) {
            onLoadFailed(url, *error);
            return true;
        }));
    connections.push_back(connect<gboolean(const char*, GTlsCertificate*, GTlsCertificateFlags)>(
        view.get(), "load-failed-with-tls-errors",
        [this](const char* url, GTlsCertificate*, GTlsCertificateFlags) {
            currentLoad = Load::failed;
            showFailurePage(url, texts::certificateNotTrusted);
            return true;
        }));
    connections.push_back(connect<gboolean(WebKitPolicyDecision*, WebKitPolicyDecisionType)>(
        view.get(), "decide-policy", [this](WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
            return onDecidePolicy(decision, type);
        }));
    connections.push_back(connect<gboolean(WebKitAuthenticationRequest*)>(
        view.get(), "authenticate",
        [this](WebKitAuthenticationRequest* request) { return onAuthenticate(request); }));
    connections.push_back(connect<GtkWidget*(WebKitNavigationAction*)>(
        view.get(), "create", [this](WebKitNavigationAction*) { return newWindows.open(view.get()); }));
    connections.push_back(connect<gboolean(WebKitScriptDialog*)>(view.get(), "script-dialog",
                                                                 [this](WebKitScriptDialog* dialog) {
                                                                     onScriptDialog(dialog);
                                                                     return true;
                                                                 }));
    connections.push_back(connect<gboolean(WebKitContextMenu*, WebKitHitTestResult*)>(
        view.get(), "context-menu", [this](WebKitContextMenu* menu, WebKitHitTestResult*) {
            return !restrictContextMenu(menu, canReload() ? reloadAction.get() : nullptr);
        }));
    connections.push_back(
        connect<void(GVariant*)>(reloadAction.get(), "activate", [this](GVariant*) { reload(); }));
    connections.push_back(connect<void(WebKitWebProcessTerminationReason)>(
        view.get(), "web-process-terminated",
        [this](WebKitWebProcessTerminationReason) { onProcessTerminated(); }));
    connections.push_back(
        connect<void(GParamSpec*)>(view.get(), "notify::estimated-load-progress", [this](GParamSpec*) {
            owner.loadProgressed(webkit_web_view_get_estimated_load_progress(view.get()));
        }));
}

/// A script, even an empty one, needs the process; WebKitGTK has no other way to ask for it without a load.
void NativeWebView::warmUp() {
    webkit_web_view_evaluate_javascript(view.get(), "", 0, nullptr, nullptr, nullptr, nullptr, nullptr);
}

void NativeWebView::takeHistoryOf(const NativeWebView& other) {
    const std::unique_ptr<WebKitWebViewSessionState, SessionStateUnref> state(
        webkit_web_view_get_session_state(other.view.get()));
    webkit_web_view_restore_session_state(view.get(), state.get());
}

std::optional<std::string> NativeWebView::url() const {
    const char* const url = webkit_web_view_get_uri(view.get());
    return url && *url ? std::optional<std::string>(url) : std::nullopt;
}

void NativeWebView::load(const std::string& url) {
    // A script as an address would never end to load. On the failure page a link to one would run it.
    if (hasZeroByte(url) || Poco::icompare(url, 0, script.size(), script) == 0 || !owner.mayShowPage(url)) {
        showFailurePage(withoutZeroBytes(url), texts::addressNotAllowed, false);
        return;
    }
    requestedURL = url;
    webkit_web_view_load_uri(view.get(), url.c_str());
}

void NativeWebView::stop() {
    answerWait.end();
    currentLoad = Load::failed;
    requestedURL.clear();
    failurePageRequested = false;
    failedLoad.reset();
    webkit_web_view_stop_loading(view.get());
}

bool NativeWebView::canReload() const {
    if (!requestedURL.empty())
        return false;
    if (failedLoad)
        return failedLoad->canTryAgain;
    const auto present = url();
    return present && !owner.isCommandURL(*present) && !present->starts_with(owner.startURL());
}

void NativeWebView::reload() {
    if (!canReload())
        return;
    if (failedLoad) {
        load(failedLoad->url);
        return;
    }
    reloadRequested = true;
    webkit_web_view_reload(view.get());
}

void NativeWebView::onLoadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_STARTED) {
        currentLoad = std::exchange(failurePageRequested, false) ? Load::failurePage : Load::page;
        answerWait.start();
        if (currentLoad == Load::page)
            owner.loadStarted(*this);
    } else if (event == WEBKIT_LOAD_REDIRECTED) {
        answerWait.start();
    } else if (event == WEBKIT_LOAD_COMMITTED) {
        onCommitted();
    } else if (event == WEBKIT_LOAD_FINISHED) {
        if (std::exchange(currentLoad, Load::none) == Load::page)
            owner.loadFinished(*this);
    }
}

/// An HTTP error with a body is a page that loads like any other.
void NativeWebView::replaceEmptyErrorResponse() {
    if (requestedURL.empty())
        findEmptyErrorResponse(view.get(), [this](const char* url, const FailureReason& reason) {
            showFailurePage(url, reason, !owner.isCommandURL(url));
        });
}

/// An address that WebKitGTK refuses to ask for, such as one with a blocked port, turns into an empty page.
void NativeWebView::onCommitted() {
    answerWait.end();
    newWindows.closeAll();
    if (currentLoad == Load::page)
        failedLoad.reset();
    const auto requested = std::exchange(requestedURL, {});
    showsStartPage = currentLoad == Load::page && url().value_or("").starts_with(owner.startURL());
    if (currentLoad == Load::page && url() == blankPage && !requested.empty() && requested != blankPage) {
        currentLoad = Load::failed;
        showFailurePage(requested, texts::addressNotAllowed);
    } else {
        owner.loadCommitted(*this);
    }
}

/// Until a load that a page has begun commits, webkit_web_view_get_uri() gives the address of that page.
std::string NativeWebView::loadingURL() const {
    WebKitWebResource* const page = webkit_web_view_get_main_resource(view.get());
    return page ? webkit_web_resource_get_uri(page) : requestedURL;
}

bool NativeWebView::onAuthenticate(WebKitAuthenticationRequest* request) {
    auto alert = answerWait.signIn(request);
    if (!alert)
        return false;
    owner.alertRequested(*std::move(alert));
    return true;
}

/// An answer without a page, by status 204, leaves the page that is there. That does not do when the
/// application has asked for another.
void NativeWebView::onLoadFailed(const char* url, const GError& error) {
    answerWait.end();
    if (std::exchange(currentLoad, Load::failed) == Load::failed || failurePageRequested)
        return;
    if (!isInterruption(error))
        showFailurePage(url, reasonOf(error));
    else if (error.domain == WEBKIT_POLICY_ERROR && !requestedURL.empty())
        showFailurePage(url, texts::noPage);
}

void NativeWebView::showFailurePage(const std::string& url, const FailureReason& reason, bool canTryAgain) {
    Log("Failed to load '%@' (%@).", url, reason.logged);
    const auto start = owner.startURL();
    failedLoad = FailedLoad{url, reason, canTryAgain && owner.mayShowPage(url),
                            url.starts_with(start) ? std::string() : start};
    failurePageRequested = true;
    // A local page may link to any address; the start page is a local file.
    webkit_web_view_load_alternate_html(view.get(), failurePage(*failedLoad, logCommand()).c_str(),
                                        url.c_str(), start.c_str());
}

bool NativeWebView::onDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
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

/// The start page begins nothing more while the page loads that the application has asked for.
void NativeWebView::onNavigation(WebKitNavigationPolicyDecision* decision) {
    WebKitNavigationAction* const action = webkit_navigation_policy_decision_get_navigation_action(decision);
    const auto url = requestURL(action);
    if (showsStartPage && currentLoad == Load::page && !requestedURL.empty() &&
        !webkit_navigation_action_is_redirect(action) && url != normalised(requestedURL)) {
        webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
        return;
    }
    const auto type = webkit_navigation_action_get_navigation_type(action);
    const bool sendsForm = type == WEBKIT_NAVIGATION_TYPE_FORM_RESUBMITTED;
    const bool reloads =
        (type == WEBKIT_NAVIGATION_TYPE_RELOAD || sendsForm) && std::exchange(reloadRequested, false);
    if (reloads && (sendsForm || owner.isCommandURL(url))) {
        webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
        if (!owner.isCommandURL(url))
            load(url);
        return;
    }
    DecisionListener listener;
    owner.decideNavigation(url, listener);
    const bool isForOthers = listener.isAllowed && requestedURL.empty() && !isLoadedByWebView(url) &&
                             !owner.isCommandURL(url);
    if (listener.isAllowed && !isForOthers)
        webkit_policy_decision_use(WEBKIT_POLICY_DECISION(decision));
    else
        webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
    if (isForOthers)
        owner.openElsewhere(url);
}

bool NativeWebView::onResponse(WebKitResponsePolicyDecision* decision) {
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
        showFailurePage(url, *reason);
    return true;
}

std::optional<FailureReason> NativeWebView::reasonNotToShow(const std::string& url,
                                                            WebKitResponsePolicyDecision* decision) const {
    if (!owner.mayShowPage(url))
        return texts::addressNotAllowed;
    WebKitURIResponse* const response = webkit_response_policy_decision_get_response(decision);
    const std::string type = webkit_uri_response_get_mime_type(response);
    if (!webkit_response_policy_decision_is_mime_type_supported(decision))
        return FailureReason(texts::typeNotSupported, type);
    if (isFile(type, contentDisposition(response)))
        return texts::isDownload;
    return std::nullopt;
}

void NativeWebView::openInBrowser(const std::string& url, WebKitURIRequest* request,
                                  const FailureReason& reason) {
    const char* const method = webkit_uri_request_get_http_method(request);  // null for "blob:"
    if (owner.isCommandURL(url))
        showFailurePage(url, reason);
    else if (method && canBrowserFetch(url, method))
        owner.openElsewhere(url);
    else
        owner.alertRequested(messageFor(
            view.get(),
            translated(owner.mayShowPage(url) ? texts::fileOfThisWindow : texts::addressNotAllowed)));
}

void NativeWebView::askBeforeClosing(std::function<void()> close) {
    if (!failedLoad && !url().value_or("file:").starts_with("file:"))
        closing.ask(std::move(close));
    else
        close();
}

/// A page is left without a question, unless its window closes.
void NativeWebView::onScriptDialog(WebKitScriptDialog* dialog) {
    const bool isObjection =
        webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM;
    if (isObjection && !closing.isAsking())
        webkit_script_dialog_confirm_set_confirmed(dialog, true);
    else if (auto alert = alertFor(view.get(), dialog))
        owner.alertRequested(isObjection ? closing.onObjection(*std::move(alert)) : *std::move(alert));
}

void NativeWebView::onProcessTerminated() {
    answerWait.end();
    closing.closeIfAsked();
    currentLoad = Load::failed;
    failurePageRequested = false;
    owner.processTerminated(*this);
}

}  // namespace vok
