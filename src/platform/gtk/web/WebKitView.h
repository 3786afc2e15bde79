#pragma once

#include "platform/WebView.h"
#include "platform/Workspace.h"
#include "platform/gtk/support/Signal.h"
#include "platform/gtk/web/AnswerWait.h"
#include "platform/gtk/web/NewWindows.h"
#include "platform/gtk/web/PageClosing.h"
#include "platform/gtk/web/WebKitSession.h"
#include "platform/gtk/window/Alert.h"
#include "platform/shared/ErrorPage.h"
#include "platform/shared/NavigationDecisions.h"

#include <gtkmm/widget.h>
#include <sigc++/trackable.h>

#include <functional>
#include <vector>

namespace vok {

/// The web view, with WebKitGTK: its loads, and the error page for a failed one. Stores nothing on disk.
class WebKitView final : public WebView, private WebFrame, public sigc::trackable {
public:
    /// `workspace` is borrowed and outlives the view. `onProgress` is called with the load's progress, from 0
    /// to 1, and `showSheet` with messages and questions for the user.
    WebKitView(Workspace& workspace, bool plainRenderer, std::function<void(double)> onProgress,
               std::function<void(Alert)> showSheet);

    Gtk::Widget& widget() { return *Glib::wrap(GTK_WIDGET(view.get())); }

    void setZoomLevel(double level) { webkit_web_view_set_zoom_level(view.get(), level); }

    /// Reloads the page or, on the error page, the failed URL. Does nothing on the start page and while the
    /// application loads another page. At a command URL it asks first if developer tools are enabled, else it
    /// does nothing. A form is not sent again.
    void reload();

    /// Shows the engine's inspector, if developer tools are enabled.
    void inspect();

    /// Calls `close`, now or later, unless the page's beforeunload handler objects and the user stays. Only a
    /// page of the web may object.
    void askBeforeClosing(std::function<void()> close);

    WebFrame& mainFrame() override { return *this; }
    std::optional<std::string> mainFrameURL() const override;
    void setShouldUpdateWhileOffscreen(bool update) override { session.setFullSpeedWhileHidden(update); }
    void setPreferredLanguage(const std::string& code) override { session.setPreferredLanguage(code); }
    void enableDeveloperTools() override;
    void setFrameLoadDelegate(WebFrameLoadDelegate& delegate) override { frameLoadDelegate = &delegate; }
    void setPolicyDelegate(WebPolicyDelegate& delegate) override { policyDelegate = &delegate; }
    void setUIDelegate(WebUIDelegate& delegate) override { uiDelegate = &delegate; }

private:
    /// The state of the latest load of the main frame.
    enum class Load {
        none,       ///< finished, or not begun
        page,       ///< in progress, and reported
        failed,     ///< failed or interrupted; WebKitGTK still reports that it finished
        errorPage,  ///< the error page; not reported
    };

    WebView& webView() override { return *this; }
    void loadRequest(const std::string& url) override;
    /// Shows the error page for `url`. A page that this view may not show is never offered again.
    void showErrorPage(const std::string& url, const FailureReason& reason, bool canTryAgain = true);
    /// Opens a file, or a page that this view may not show, in the default browser, or shows a message that
    /// it cannot be opened; `reason` is for the error page at a command URL.
    void openInBrowser(const std::string& url, WebKitURIRequest* request, const FailureReason& reason);
    void bindSignals();
    void onLoadChanged(WebKitLoadEvent event);
    /// URL of the load in progress.
    std::string loadingURL() const;
    /// `requestedURL` as the engine writes it.
    std::string normalisedRequest() const;
    bool isStartURL(const std::string& url) const;
    bool canReload() const;
    void askToRunAgain(const std::string& commandURL);
    void onRunAgainAnswer(bool agreed, const std::string& commandURL);
    bool isDeveloperMode() const;
    bool onAuthenticate(WebKitAuthenticationRequest* request);
    void onCommitted();
    /// Shows the error page, a little later, if the page that has loaded is an HTTP error with an empty body.
    /// A command that it has run is not offered again.
    void replaceEmptyErrorResponse();
    void onLoadFailed(const char* url, const GError& error);
    bool onDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    void onNavigation(WebKitNavigationPolicyDecision* decision);
    bool onResponse(WebKitResponsePolicyDecision* decision);
    /// Nothing if the response is a page that this view may show.
    std::optional<FailureReason> reasonNotToShow(const std::string& url,
                                                 WebKitResponsePolicyDecision* decision) const;
    void onStartPageFile(WebKitURISchemeRequest* request);
    void onScriptDialog(WebKitScriptDialog* dialog);
    void onProcessTerminated();

    Workspace& workspace;
    std::function<void(double)> onProgress;
    std::function<void(Alert)> showSheet;
    struct : WebFrameLoadDelegate, WebPolicyDelegate, WebUIDelegate {
    } noDelegate;
    WebFrameLoadDelegate* frameLoadDelegate = &noDelegate;
    WebPolicyDelegate* policyDelegate = &noDelegate;
    WebUIDelegate* uiDelegate = &noDelegate;
    WebKitSession session;
    GObjectPtr<WebKitWebView> view{session.makeView()};
    Load currentLoad = Load::none;
    std::string requestedURL;              ///< requested by `loadRequest` and not committed yet
    bool showsStartPage = false;           ///< the current page is the start page
    bool errorPageRequested = false;       ///< the next load is the error page
    bool reloadRequested = false;          ///< the next reload decision belongs to `reload`
    std::string askedCommandURL;           ///< the user is asked whether to run the page's command again
    std::optional<FailedLoad> failedLoad;  ///< the load that the error page shows, while it is shown
    AnswerWait answerWait;
    GObjectPtr<GSimpleAction> reloadAction{g_simple_action_new("reload", nullptr)};
    PageClosing closing{view.get()};
    NewWindows newWindows{
        [this](const std::string& url) { requestNewWindow(*this, *uiDelegate, *policyDelegate, url); }};
    std::vector<SignalConnection> connections;
};

}  // namespace vok
