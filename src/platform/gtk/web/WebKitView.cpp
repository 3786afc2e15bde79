#include "platform/gtk/web/WebKitView.h"

#include "platform/shared/NavigationDecisions.h"

namespace vok {

namespace {

bool isLocal(const std::string& url) { return url.starts_with("file:"); }

/// Sets whether the keyboard and accessibility can reach the view.
void setReachable(Gtk::Widget& widget, bool reachable) {
    widget.set_can_focus(reachable);
    gtk_accessible_update_state(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_STATE_HIDDEN, !reachable, -1);
}

}  // namespace

WebKitView::WebKitView(Workspace& desktop, bool plainRenderer, std::function<void(double)> progress,
                       std::function<void(Alert)> sheets)
    : workspace(desktop), onProgress(std::move(progress)), showSheet(std::move(sheets)),
      session(plainRenderer, [this](WebKitDownload* download) { onDownload(download); }),
      shown(makeNativeView()), next(makeNativeView()), active(shown.get()) {
    setReachable(next->widget(), false);
    layers.set_expand();
    layers.set_child(next->widget());
    layers.add_overlay(shown->widget());
}

std::unique_ptr<NativeWebView> WebKitView::makeNativeView() {
    NativeWebViewOwner& owner = *this;
    return std::make_unique<NativeWebView>(owner, session);
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

void WebKitView::setShouldUpdateWhileOffscreen(bool update) { session.setFullSpeedWhileHidden(update); }

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
    if (shown->isLoading())
        shown->stop();
}

void WebKitView::activateShown() {
    if (active == shown.get())
        return;
    next->stop();
    active = shown.get();
}

/// Once the application has requested another page, the page in the inactive view is obsolete: its navigation
/// is cancelled, as it would be with one view.
void WebKitView::loadStarted(NativeWebView& view) {
    if (&view != active)
        view.stop();
    else
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
    if (&view != active)
        return;
    frameLoadDelegate->webViewDidFinishLoadForFrame(*this, *this);
    if (&view == active)
        view.replaceEmptyErrorResponse();
}

/// A process that only waited for a load is no loss: the load starts another.
void WebKitView::processTerminated(NativeWebView& view) {
    const bool lost = &view == shown.get() || &view == active;
    if (lost)
        frameLoadDelegate->webViewWebContentProcessDidTerminate(*this);
}

bool WebKitView::isCommandURL(const std::string& url) const {
    return policyDelegate->webViewIsCommandURL(url);
}

bool WebKitView::mayShowPage(const std::string& url) const { return policyDelegate->webViewMayShowPage(url); }

std::string WebKitView::startURL() const { return policyDelegate->webViewStartURL(); }

bool WebKitView::allowsNavigation(const std::string& url, bool isApplicationLoad) {
    return vok::allowsNavigation(*this, *policyDelegate, workspace, url, isApplicationLoad);
}

void WebKitView::newWindowRequested(const std::string& requestURL) {
    requestNewWindow(*this, *uiDelegate, *policyDelegate, requestURL);
}

void WebKitView::onDownload(WebKitDownload* download) {
    WebKitURIRequest* const request = webkit_download_get_request(download);
    auto& view = next && next->is(webkit_download_get_web_view(download)) ? *next : *shown;
    view.openInBrowser(webkit_uri_request_get_uri(request), request, texts::isDownload);
}

void WebKitView::alertRequested(Alert alert) { showSheet(std::move(alert)); }

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
