#include "platform/gtk/web/WebKitView.h"

#include "platform/shared/NavigationDecisions.h"

namespace vok {

WebKitView::WebKitView(Workspace& desktop, bool plainRenderer, std::function<void(double)> progress,
                       std::function<void(Alert)> sheets)
    : workspace(desktop), onProgress(std::move(progress)), showSheet(std::move(sheets)),
      session(plainRenderer, [this](WebKitDownload* download) { onDownload(download); }),
      view(*this, session) {}

void WebKitView::loadStarted() { frameLoadDelegate->webViewDidStartProvisionalLoadForFrame(*this, *this); }

void WebKitView::loadFinished() { frameLoadDelegate->webViewDidFinishLoadForFrame(*this, *this); }

void WebKitView::processTerminated() { frameLoadDelegate->webViewWebContentProcessDidTerminate(*this); }

void WebKitView::enableDeveloperTools() {
    session.enableDeveloperTools();
    view.printConsole();
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
    view.openInBrowser(webkit_uri_request_get_uri(request), request, texts::isDownload);
}

void WebKitView::alertRequested(Alert alert) { showSheet(std::move(alert)); }

}  // namespace vok
