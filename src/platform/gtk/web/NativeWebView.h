#pragma once

#include "platform/WebView.h"
#include "platform/gtk/support/Signal.h"
#include "platform/gtk/web/AnswerWait.h"
#include "platform/gtk/web/NewWindows.h"
#include "platform/gtk/web/PageClosing.h"
#include "platform/gtk/web/WebKitSession.h"
#include "platform/gtk/window/Alert.h"
#include "platform/shared/ErrorPage.h"

#include <gtkmm/widget.h>
#include <sigc++/trackable.h>

#include <vector>

namespace vok {

/// Gets the events of a native web view. The view must exist until each call has returned.
class NativeWebViewOwner {
public:
    virtual ~NativeWebViewOwner() = default;

    virtual void loadStarted() = 0;
    virtual void loadFinished() = 0;
    virtual void loadProgressed(double progress) = 0;
    virtual void processTerminated() = 0;
    /// The policy delegate's answers.
    virtual bool isCommandURL(const std::string& url) const = 0;
    virtual bool mayShowPage(const std::string& url) const = 0;
    virtual std::string startURL() const = 0;
    /// Returns whether the view follows the navigation. Otherwise a URL for another program has been opened
    /// there.
    virtual bool allowsNavigation(const std::string& url, bool isApplicationLoad) = 0;
    /// A window that a page has opened gets its first URL; the view shows no second window.
    virtual void newWindowRequested(const std::string& requestURL) = 0;
    /// A URL for another program of the desktop.
    virtual void openElsewhere(const std::string& url) = 0;
    /// A message or question for the user.
    virtual void alertRequested(Alert alert) = 0;
};

/// One WebKitWebView: its loads, and the error page for a failed one.
class NativeWebView : public sigc::trackable {
public:
    /// `owner` is borrowed and outlives the view.
    NativeWebView(NativeWebViewOwner& owner, const WebKitSession& session);

    Gtk::Widget& widget() { return *Glib::wrap(GTK_WIDGET(view.get())); }

    void setZoomLevel(double level) { webkit_web_view_set_zoom_level(view.get(), level); }

    void load(const std::string& url);

    /// Reloads the page or, on the error page, the failed URL. Does nothing on the start page and while the
    /// application loads another page. At a command URL it asks first if developer tools are enabled, else it
    /// does nothing. A form is not sent again.
    void reload();

    /// URL of the page, or of the one that the application loads; nothing before the first load.
    std::optional<std::string> url() const;

    /// Shows the engine's inspector, if developer tools are enabled.
    void inspect();

    /// Prints the console of the pages to standard output from now on.
    void printConsole();

    /// Opens a file, or a page that this view may not show, in the default browser, or shows a message that
    /// it cannot be opened; `reason` is for the error page at a command URL.
    void openInBrowser(const std::string& url, WebKitURIRequest* request, const FailureReason& reason);

    /// Calls `close`, now or later, unless the page's beforeunload handler objects and the user stays. Only a
    /// page of the web may object.
    void askBeforeClosing(std::function<void()> close);

    /// Shows the error page for `url`. A page that this view may not show is never offered again.
    void showErrorPage(const std::string& url, const FailureReason& reason, bool canTryAgain = true);

private:
    /// The state of the latest load of the main frame.
    enum class Load {
        none,       ///< finished, or not begun
        page,       ///< in progress, and reported
        failed,     ///< failed or interrupted; WebKitGTK still reports that it finished
        errorPage,  ///< the error page; not reported
    };

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

    NativeWebViewOwner& owner;
    GObjectPtr<WebKitWebView> view;
    Load currentLoad = Load::none;
    std::string requestedURL;              ///< requested by `load` and not committed yet
    bool showsStartPage = false;           ///< the current page is the start page
    bool errorPageRequested = false;       ///< the next load is the error page
    bool reloadRequested = false;          ///< the next reload decision belongs to `reload`
    std::string askedCommandURL;           ///< the user is asked whether to run the page's command again
    std::optional<FailedLoad> failedLoad;  ///< the load that the error page shows, while it is shown
    AnswerWait answerWait;
    GObjectPtr<GSimpleAction> reloadAction{g_simple_action_new("reload", nullptr)};
    PageClosing closing{view.get()};
    NewWindows newWindows{[this](const std::string& url) { owner.newWindowRequested(url); }};
    std::vector<SignalConnection> connections;
};

}  // namespace vok
