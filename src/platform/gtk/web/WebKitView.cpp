#include "platform/gtk/web/WebKitView.h"

#include "foundation/Log.h"
#include "foundation/Shielded.h"
#include "platform/gtk/support/ZeroBytes.h"
#include "platform/gtk/web/EmptyErrorResponse.h"
#include "platform/gtk/web/LoadErrors.h"
#include "platform/gtk/web/PageConsole.h"
#include "platform/gtk/web/PageDialogs.h"
#include "platform/gtk/web/RefusedDrops.h"
#include "platform/gtk/web/RefusedLinks.h"
#include "platform/gtk/web/StartPage.h"

#include <Poco/String.h>

#include <utility>

namespace vok {

constexpr auto blankPage = "about:blank";
const std::string script = "javascript:";

WebKitView::WebKitView(Workspace& desktop, bool plainRenderer, std::function<void(double)> progress,
                       std::function<void(Alert)> sheets)
    : workspace(desktop), onProgress(std::move(progress)), showSheet(std::move(sheets)),
      session(plainRenderer,
              [this](WebKitDownload* download) {
                  WebKitURIRequest* const request = webkit_download_get_request(download);
                  openInBrowser(webkit_uri_request_get_uri(request), request, texts::isDownload);
              }),
      answerWait([this] { showErrorPage(loadingURL(), texts::noAnswer); },
                 [this] { showErrorPage(loadingURL(), texts::passwordRequired); }) {
    bindSignals();
    refuseDrops(GTK_WIDGET(view.get()));
    WebKitWebContext* const context = webkit_web_view_get_context(view.get());
    webkit_security_manager_register_uri_scheme_as_cors_enabled(
        webkit_web_context_get_security_manager(context), startPageScheme);
    webkit_web_context_register_uri_scheme(
        context, startPageScheme,
        [](WebKitURISchemeRequest* request, gpointer data) {
            shielded([&] { static_cast<WebKitView*>(data)->onStartPageFile(request); });
        },
        this, nullptr);
}

void WebKitView::bindSignals() {
    connections.push_back(watchRefusedLinks(
        view.get(), [this](const std::string& url) { showErrorPage(url, texts::addressNotAllowed); }));
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
            showErrorPage(url, texts::certificateNotTrusted);
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
            onProgress(webkit_web_view_get_estimated_load_progress(view.get()));
        }));
}

bool WebKitView::isStartURL(const std::string& url) const {
    const auto start = policyDelegate->webViewStartURL();
    return !start.empty() && url.starts_with(start);
}

std::optional<std::string> WebKitView::mainFrameURL() const {
    const char* const url = webkit_web_view_get_uri(view.get());
    if (!url || !*url)
        return std::nullopt;
    if (url == std::string_view(blankPage) && (showsStartPage || isStartURL(requestedURL)))
        return policyDelegate->webViewStartURL();
    return url;
}

void WebKitView::onStartPageFile(WebKitURISchemeRequest* request) {
    if (showsStartPage || isStartURL(requestedURL)) {
        answerFromDirectoryOf(policyDelegate->webViewStartURL(), request);
        return;
    }
    g_autoptr(GError) error =
        g_error_new(G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED, "This is for the start page.");
    webkit_uri_scheme_request_finish_error(request, error);
}

void WebKitView::loadRequest(const std::string& url) {
    // A load of a javascript: URL would never finish. On the error page a link to one would run it.
    if (hasZeroByte(url) || Poco::icompare(url, 0, script.size(), script) == 0 ||
        !policyDelegate->webViewMayShowPage(url)) {
        showErrorPage(withoutZeroBytes(url), texts::addressNotAllowed, false);
        return;
    }
    requestedURL = url;
    if (const auto content = isStartURL(url) ? startPageContent(url) : std::nullopt)
        webkit_web_view_load_html(view.get(), content->c_str(), nullptr);
    else
        webkit_web_view_load_uri(view.get(), url.c_str());
}

bool WebKitView::isDeveloperMode() const {
    return webkit_settings_get_enable_developer_extras(webkit_web_view_get_settings(view.get()));
}

void WebKitView::inspect() {
    if (isDeveloperMode())
        webkit_web_inspector_show(webkit_web_view_get_inspector(view.get()));
}

void WebKitView::enableDeveloperTools() {
    session.enableDeveloperTools();
    connections.push_back(printPageConsole(webkit_web_view_get_user_content_manager(view.get())));
}

void WebKitView::onLoadChanged(WebKitLoadEvent event) {
    if (event == WEBKIT_LOAD_STARTED) {
        currentLoad = std::exchange(errorPageRequested, false) ? Load::errorPage : Load::page;
        answerWait.start();
        askedCommandURL.clear();
        if (currentLoad == Load::page)
            frameLoadDelegate->webViewDidStartProvisionalLoadForFrame(*this, *this);
    } else if (event == WEBKIT_LOAD_REDIRECTED) {
        answerWait.start();
    } else if (event == WEBKIT_LOAD_COMMITTED) {
        onCommitted();
    } else if (event == WEBKIT_LOAD_FINISHED) {
        if (std::exchange(currentLoad, Load::none) == Load::page) {
            frameLoadDelegate->webViewDidFinishLoadForFrame(*this, *this);
            replaceEmptyErrorResponse();
        }
    }
}

/// An HTTP error with a body loads like any other page.
void WebKitView::replaceEmptyErrorResponse() {
    if (requestedURL.empty())
        findEmptyErrorResponse(view.get(), [this](const char* url, const FailureReason& reason) {
            showErrorPage(url, reason, !policyDelegate->webViewIsCommandURL(url));
        });
}

/// A URL that WebKitGTK refuses to request, such as one with a restricted port, becomes an empty page.
void WebKitView::onCommitted() {
    answerWait.end();
    newWindows.closeAll();
    const auto requested = std::exchange(requestedURL, {});
    showsStartPage = false;
    if (currentLoad != Load::page)
        return;
    failedLoad.reset();
    const bool isBlank = webkit_web_view_get_uri(view.get()) == std::string_view(blankPage);
    showsStartPage = isStartURL(isBlank ? requested : mainFrameURL().value_or(""));
    if (isBlank && !showsStartPage && !requested.empty() && requested != blankPage) {
        currentLoad = Load::failed;
        showErrorPage(requested, texts::addressNotAllowed);
    }
}

/// Until a load started by a page commits, webkit_web_view_get_uri() returns the URL of that page.
std::string WebKitView::loadingURL() const {
    WebKitWebResource* const page = webkit_web_view_get_main_resource(view.get());
    return page ? webkit_web_resource_get_uri(page) : requestedURL;
}

bool WebKitView::onAuthenticate(WebKitAuthenticationRequest* request) {
    auto alert = answerWait.signIn(request);
    if (!alert)
        return false;
    showSheet(*std::move(alert));
    return true;
}

/// A response without a page, such as status 204, leaves the current page. If the application has requested
/// the load, that is an error.
void WebKitView::onLoadFailed(const char* url, const GError& error) {
    answerWait.end();
    if (std::exchange(currentLoad, Load::failed) == Load::failed || errorPageRequested)
        return;
    if (!isInterruption(error))
        showErrorPage(url, reasonOf(error));
    else if (error.domain == WEBKIT_POLICY_ERROR && !requestedURL.empty())
        showErrorPage(url, texts::noPage);
}

void WebKitView::showErrorPage(const std::string& url, const FailureReason& reason, bool canTryAgain) {
    Log("Failed to load '%@' (%@).", url, reason.logged);
    const auto start = policyDelegate->webViewStartURL();
    failedLoad = FailedLoad{url, reason, canTryAgain && policyDelegate->webViewMayShowPage(url),
                            url.starts_with(start) ? std::string() : start};
    errorPageRequested = true;
    // A local page may link to any URL; the start page is a local file.
    webkit_web_view_load_alternate_html(view.get(), errorPage(*failedLoad, logCommand()).c_str(), url.c_str(),
                                        start.c_str());
}

void WebKitView::askBeforeClosing(std::function<void()> close) {
    if (!failedLoad && !mainFrameURL().value_or("file:").starts_with("file:"))
        closing.ask(std::move(close));
    else
        close();
}

/// Navigation asks no question; only closing the window does.
void WebKitView::onScriptDialog(WebKitScriptDialog* dialog) {
    const bool isObjection =
        webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM;
    if (isObjection && !closing.isAsking())
        webkit_script_dialog_confirm_set_confirmed(dialog, true);
    else if (auto alert = alertFor(view.get(), dialog))
        showSheet(isObjection ? closing.onObjection(*std::move(alert)) : *std::move(alert));
}

void WebKitView::onProcessTerminated() {
    answerWait.end();
    closing.closeIfAsked();
    currentLoad = Load::failed;
    errorPageRequested = false;
    askedCommandURL.clear();
    frameLoadDelegate->webViewWebContentProcessDidTerminate(*this);
}

}  // namespace vok
