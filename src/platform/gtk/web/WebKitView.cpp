#include "platform/gtk/web/WebKitView.h"

#include "platform/gtk/start/Renderer.h"
#include "platform/gtk/web/PageDialogs.h"

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

GObjectPtr<WebKitSettings> makeSettings() {
    GObjectPtr<WebKitSettings> settings(webkit_settings_new());
    webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), true);
    if (plainRendererInUse())
        webkit_settings_set_hardware_acceleration_policy(settings.get(),
                                                         WEBKIT_HARDWARE_ACCELERATION_POLICY_NEVER);
    return settings;
}

bool isLocal(const std::string& url) { return url.starts_with("file:"); }

/// Is the view there for the keyboard and for accessibility?
void setReachable(Gtk::Widget& widget, bool reachable) {
    widget.set_can_focus(reachable);
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_HIDDEN, !reachable, -1);
}

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
    : onProgress(std::move(progress)), showSheet(std::move(sheets)), settings(makeSettings()),
      session(webkit_network_session_new_ephemeral()), shown(makeNativeView()), next(makeNativeView()),
      active(shown.get()), downloadStarted(connect<void(WebKitDownload*)>(
                               session.get(), "download-started",
                               [this](WebKitDownload* download) { onDownloadStarted(download); })) {
    setReachable(next->widget(), false);
    layers.set_expand();
    layers.set_child(next->widget());
    layers.add_overlay(shown->widget());
}

std::unique_ptr<NativeWebView> WebKitView::makeNativeView() {
    NativeWebViewOwner& owner = *this;
    return std::make_unique<NativeWebView>(owner, session.get(), settings.get());
}

void WebKitView::setZoomLevel(double level) {
    shown->setZoomLevel(level);
    if (next)
        next->setZoomLevel(level);
}

std::optional<std::string> WebKitView::mainFrameURL() const {
    const auto url = active->url();
    return url ? url : shown->url();
}

void WebKitView::setShouldUpdateWhileOffscreen(bool update) {
    const std::unique_ptr<WebKitFeatureList, FeatureListUnref> features(webkit_settings_get_all_features());
    for (gsize i = 0; i < webkit_feature_list_get_length(features.get()); ++i) {
        WebKitFeature* const feature = webkit_feature_list_get(features.get(), i);
        if (isHiddenPageFeature(feature))
            webkit_settings_set_feature_enabled(settings.get(), feature, !update);
    }
}

void WebKitView::loadRequest(const std::string& url) {
    if (next && !isLocal(url))
        activateNext();
    else
        activateShown();
    active->load(url);
    if (next && active == shown.get())
        next->warmUp();
}

void WebKitView::activateNext() {
    if (active == next.get())
        return;
    next->takeHistoryOf(*shown);
    active = next.get();
}

void WebKitView::activateShown() {
    if (active == shown.get())
        return;
    next->stop();
    active = shown.get();
}

void WebKitView::loadStarted(NativeWebView& view) {
    if (&view == shown.get())
        activateShown();
    if (frameLoadDelegate)
        frameLoadDelegate->webViewDidStartProvisionalLoadForFrame(*this, *this);
}

void WebKitView::loadCommitted(NativeWebView& view) {
    if (&view != active)
        return;
    if (active == next.get())
        showNext();
    else if (!isLocal(view.url().value_or("")))
        dropNext();
}

void WebKitView::loadFinished(NativeWebView& view) {
    if (&view != active || !frameLoadDelegate)
        return;
    frameLoadDelegate->webViewDidFinishLoadForFrame(*this, *this);
    if (&view == active)
        view.replaceEmptyErrorResponse();
}

/// Nothing is lost with a process that only waited for a load, which will start another.
void WebKitView::processTerminated(NativeWebView& view) {
    const bool lost = &view == shown.get() || &view == active;
    if (lost && frameLoadDelegate)
        frameLoadDelegate->webViewWebContentProcessDidTerminate(*this);
}

void WebKitView::decideNavigation(const std::string& requestURL, WebPolicyDecisionListener& listener) {
    if (policyDelegate)
        policyDelegate->webViewDecidePolicyForNavigationAction(*this, requestURL, listener);
    else
        listener.use();
}

void WebKitView::newWindowRequested(const std::string& requestURL) {
    if (!uiDelegate || !policyDelegate)
        return;
    auto& target = uiDelegate->webViewCreateWebViewWithRequest(*this, requestURL);
    NewWindowListener listener(target, requestURL);
    policyDelegate->webViewDecidePolicyForNavigationAction(target, requestURL, listener);
}

/// The web view would put the file into the person's download directory without a word.
void WebKitView::onDownloadStarted(WebKitDownload* download) {
    webkit_download_cancel(download);
    auto& view = next && next->hasBegun(download) ? *next : *shown;
    view.showFailurePage(webkit_uri_request_get_uri(webkit_download_get_request(download)),
                         "It is a file to download, which cannot be shown here.");
}

void WebKitView::scriptDialogRequested(WebKitScriptDialog* dialog) { answerScriptDialog(dialog, showSheet); }

void WebKitView::showNext() {
    layers.remove_overlay(shown->widget());
    shown = std::move(next);
    setReachable(shown->widget(), true);
    shown->widget().grab_focus();
}

void WebKitView::dropNext() {
    if (next)
        layers.unset_child();
    next.reset();
}

}  // namespace vok
