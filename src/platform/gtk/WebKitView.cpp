#include "platform/gtk/WebKitView.h"

#include "foundation/Log.h"
#include "platform/FailurePage.h"
#include "platform/gtk/PageDialogs.h"
#include "platform/gtk/Renderer.h"
#include "platform/gtk/WordlessError.h"
#include "platform/gtk/ZeroBytes.h"

#include <Poco/String.h>
#include <glibmm/main.h>

#include <algorithm>
#include <array>

namespace vok {

namespace {

struct FeatureListUnref {
    void operator()(WebKitFeatureList* list) const { webkit_feature_list_unref(list); }
};

/// How the names of the features begin by which WebKitGTK slows down or stops a page whose window is hidden.
constexpr auto hiddenPageFeatures = std::to_array<std::string_view>({"HiddenPage", "PageVisibilityBased"});

bool isHiddenPageFeature(WebKitFeature* feature) {
    const std::string_view name = webkit_feature_get_identifier(feature);
    return std::ranges::any_of(hiddenPageFeatures,
                               [&](auto beginning) { return name.starts_with(beginning); });
}

constexpr unsigned answerTimeout = 60;  // seconds
constexpr auto blankPage = "about:blank";
const std::string script = "javascript:";
constexpr auto notAllowed = "This address is not allowed.";

GObjectPtr<WebKitSettings> makeSettings() {
    GObjectPtr<WebKitSettings> settings(webkit_settings_new());
    webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), true);
    if (plainRendererInUse())
        webkit_settings_set_hardware_acceleration_policy(settings.get(),
                                                         WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    return settings;
}

GObjectPtr<WebKitWebView> makeView() {
    const GObjectPtr<WebKitNetworkSession> session(webkit_network_session_new_ephemeral());
    const auto settings = makeSettings();
    return GObjectPtr<WebKitWebView>(WEBKIT_WEB_VIEW(g_object_ref_sink(g_object_new(
        WEBKIT_TYPE_WEB_VIEW, "network-session", session.get(), "settings", settings.get(), nullptr))));
}

std::string requestURL(WebKitNavigationAction* action) {
    return webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
}

bool isInterruption(const GError& error) {
    return g_error_matches(&error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) ||
           g_error_matches(&error, WEBKIT_POLICY_ERROR,
                           WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE);
}

class DecisionListener final : public WebPolicyDecisionListener {
public:
    explicit DecisionListener(WebKitPolicyDecision* asked) : decision(asked) {}
    void use() override { webkit_policy_decision_use(decision); }
    void ignore() override { webkit_policy_decision_ignore(decision); }

private:
    WebKitPolicyDecision* decision;
};

/// The decision about a window of its own: taken without asking the view to load anything.
class NewWindowListener final : public WebPolicyDecisionListener {
public:
    NewWindowListener(WebView& target, const std::string& requested) : view(target), url(requested) {}
    void use() override { view.mainFrame().loadRequest(url); }
    void ignore() override {}

private:
    WebView& view;
    const std::string& url;
};

}  // namespace

WebKitView::WebKitView(std::function<void(double)> progress, std::function<void(Alert)> sheets)
    : view(makeView()), onProgress(std::move(progress)), showSheet(std::move(sheets)) {
    widget().set_expand();
    bindSignals();
}

void WebKitView::bindSignals() {
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
            load = Load::failed;
            showFailurePage(url, "The certificate of the server cannot be trusted.");
            return true;
        }));
    connections.push_back(connect<gboolean(WebKitPolicyDecision*, WebKitPolicyDecisionType)>(
        view.get(), "decide-policy", [this](WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
            return onDecidePolicy(decision, type);
        }));
    connections.push_back(connect<GtkWidget*(WebKitNavigationAction*)>(
        view.get(), "create", [this](WebKitNavigationAction* action) -> GtkWidget* {
            onCreate(action);
            return nullptr;
        }));
    connections.push_back(connect<gboolean(WebKitScriptDialog*)>(view.get(), "script-dialog",
                                                                 [this](WebKitScriptDialog* dialog) {
                                                                     answerScriptDialog(dialog, showSheet);
                                                                     return true;
                                                                 }));
    connections.push_back(connect<gboolean(WebKitContextMenu*, WebKitHitTestResult*)>(
        view.get(), "context-menu",
        [](WebKitContextMenu* menu, WebKitHitTestResult*) { return !restrictContextMenu(menu); }));
    connections.push_back(connect<void(WebKitWebProcessTerminationReason)>(
        view.get(), "web-process-terminated",
        [this](WebKitWebProcessTerminationReason) { onProcessTerminated(); }));
    connections.push_back(
        connect<void(WebKitDownload*)>(webkit_web_view_get_network_session(view.get()), "download-started",
                                       [this](WebKitDownload* download) { onDownloadStarted(download); }));
    connections.push_back(
        connect<void(GParamSpec*)>(view.get(), "notify::estimated-load-progress", [this](GParamSpec*) {
            onProgress(webkit_web_view_get_estimated_load_progress(view.get()));
        }));
}

void WebKitView::setZoomLevel(double level) { webkit_web_view_set_zoom_level(view.get(), level); }

std::optional<std::string> WebKitView::mainFrameURL() const {
    const char* const url = webkit_web_view_get_uri(view.get());
    return url ? std::optional<std::string>(url) : std::nullopt;
}

void WebKitView::setShouldUpdateWhileOffscreen(bool update) {
    WebKitSettings* const settings = webkit_web_view_get_settings(view.get());
    const std::unique_ptr<WebKitFeatureList, FeatureListUnref> features(webkit_settings_get_all_features());
    for (gsize i = 0; i < webkit_feature_list_get_length(features.get()); ++i) {
        WebKitFeature* const feature = webkit_feature_list_get(features.get(), i);
        if (isHiddenPageFeature(feature))
            webkit_settings_set_feature_enabled(settings, feature, !update);
    }
}

void WebKitView::loadRequest(const std::string& url) {
    // A script as an address would never end to load.
    if (hasZeroByte(url) || Poco::icompare(url, 0, script.size(), script) == 0) {
        showFailurePage(withoutZeroBytes(url), notAllowed);
        return;
    }
    requestedURL = url;
    webkit_web_view_load_uri(view.get(), url.c_str());
}

void WebKitView::onLoadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_STARTED) {
        load = std::exchange(failurePageRequested, false) ? Load::failurePage : Load::page;
        awaitAnswer();
        if (load == Load::page && frameLoadDelegate)
            frameLoadDelegate->webViewDidStartProvisionalLoadForFrame(*this, *this);
    } else if (event == WEBKIT_LOAD_COMMITTED) {
        onCommitted();
    } else if (event == WEBKIT_LOAD_FINISHED) {
        if (std::exchange(load, Load::none) == Load::page && frameLoadDelegate)
            onFinished();
    }
}

/// An error that the server answers is a page that loads like any other; only one without a word needs ours.
void WebKitView::onFinished() {
    frameLoadDelegate->webViewDidFinishLoadForFrame(*this, *this);
    if (requestedURL.empty())
        findWordlessError(
            view.get(), [this](const char* url, const std::string& reason) { showFailurePage(url, reason); });
}

/// An address that WebKitGTK refuses to ask for, such as one with a blocked port, turns into an empty page.
void WebKitView::onCommitted() {
    silence.disconnect();
    const auto requested = std::exchange(requestedURL, {});
    if (load != Load::page || mainFrameURL() != blankPage || requested.empty() || requested == blankPage)
        return;
    load = Load::failed;
    showFailurePage(requested, notAllowed);
}

/// WebKitGTK itself would wait for ever.
void WebKitView::awaitAnswer() {
    silence.disconnect();
    silence = Glib::signal_timeout().connect_seconds(
        [this] {
            showFailurePage(mainFrameURL().value_or(""), "The server does not answer.");
            return false;
        },
        answerTimeout);
}

void WebKitView::onLoadFailed(const char* url, const GError& error) {
    silence.disconnect();
    load = Load::failed;
    if (!isInterruption(error))
        showFailurePage(url, error.message);
}

void WebKitView::showFailurePage(const std::string& url, const std::string& reason) {
    Log("Failed to load '%@' (%@).", url, reason);
    failurePageRequested = true;
    // With its own address as the base, the page may link to it even where that is a local file.
    webkit_web_view_load_alternate_html(view.get(), failurePage(url, reason).c_str(), url.c_str(),
                                        url.c_str());
}

bool WebKitView::onDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
    switch (type) {
    case WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION: {
        if (!policyDelegate)
            return false;
        DecisionListener listener(decision);
        const auto url = requestURL(webkit_navigation_policy_decision_get_navigation_action(
            WEBKIT_NAVIGATION_POLICY_DECISION(decision)));
        policyDelegate->webViewDecidePolicyForNavigationAction(*this, url, listener);
        return true;
    }
    case WEBKIT_POLICY_DECISION_TYPE_RESPONSE:
        return onResponse(WEBKIT_RESPONSE_POLICY_DECISION(decision));
    default:
        return false;  // a new window is asked for again, in "create"
    }
}

/// A page that is a file to download would leave the view as it is, without a word.
bool WebKitView::onResponse(WebKitResponsePolicyDecision* decision) {
    if (!webkit_response_policy_decision_is_main_frame_main_resource(decision) ||
        webkit_response_policy_decision_is_mime_type_supported(decision))
        return false;
    webkit_policy_decision_ignore(WEBKIT_POLICY_DECISION(decision));
    WebKitURIResponse* const response = webkit_response_policy_decision_get_response(decision);
    showFailurePage(webkit_uri_response_get_uri(response),
                    unsupportedTypeReason(webkit_uri_response_get_mime_type(response)));
    return true;
}

/// The web view would put the file into the person's download directory without a word.
void WebKitView::onDownloadStarted(WebKitDownload* download) {
    webkit_download_cancel(download);
    showFailurePage(webkit_uri_request_get_uri(webkit_download_get_request(download)),
                    "It is a file to download, which cannot be shown here.");
}

void WebKitView::onCreate(WebKitNavigationAction* action) {
    if (!uiDelegate || !policyDelegate)
        return;
    const auto url = requestURL(action);
    auto& target = uiDelegate->webViewCreateWebViewWithRequest(*this, url);
    NewWindowListener listener(target, url);
    policyDelegate->webViewDecidePolicyForNavigationAction(target, url, listener);
}

void WebKitView::onProcessTerminated() {
    silence.disconnect();
    load = Load::failed;
    failurePageRequested = false;
    if (frameLoadDelegate)
        frameLoadDelegate->webViewWebContentProcessDidTerminate(*this);
}

}  // namespace vok
