#pragma once

#include "platform/WebView.h"
#include "platform/gtk/support/Signal.h"
#include "platform/gtk/web/AnswerWait.h"
#include "platform/gtk/web/NewWindows.h"
#include "platform/gtk/web/PageClosing.h"
#include "platform/gtk/web/RefusedLinks.h"
#include "platform/gtk/web/WebKitSession.h"
#include "platform/gtk/window/Alert.h"
#include "platform/shared/ErrorPage.h"

#include <gtkmm/widget.h>

#include <vector>

namespace vok {

class NativeWebView;

/// Hears what happens in a native web view, and keeps the view until it has returned.
class NativeWebViewOwner {
public:
    virtual ~NativeWebViewOwner() = default;

    /// A load has begun.
    virtual void loadStarted(NativeWebView& view) = 0;
    /// Another page takes the place of the one before; it may be the page that says that a load has failed.
    virtual void loadCommitted(NativeWebView& view) = 0;
    /// A load has ended well.
    virtual void loadFinished(NativeWebView& view) = 0;
    virtual void loadProgressed(double progress) = 0;
    virtual void processTerminated(NativeWebView& view) = 0;
    /// As the policy delegate has it.
    virtual bool isCommandURL(const std::string& url) const = 0;
    virtual bool mayShowPage(const std::string& url) const = 0;
    virtual std::string startURL() const = 0;
    virtual void decideNavigation(const std::string& requestURL, WebPolicyDecisionListener& listener) = 0;
    /// A window that a page has opened gets its first address; the view itself shows no other window.
    virtual void newWindowRequested(const std::string& requestURL) = 0;
    /// An address for another program of the desktop.
    virtual void openElsewhere(const std::string& url) = 0;
    /// Something is to be said to the user, or asked.
    virtual void alertRequested(Alert alert) = 0;
};

/// One WebKitWebView: its loads, and the page that stands in for one that failed.
class NativeWebView {
public:
    /// `owner` is borrowed and outlives the view.
    NativeWebView(NativeWebViewOwner& owner, const WebKitSession& session);

    Gtk::Widget& widget() { return *Glib::wrap(GTK_WIDGET(view.get())); }

    void setZoomLevel(double level) { webkit_web_view_set_zoom_level(view.get(), level); }

    /// Starts the process that draws the pages, before there is anything to load.
    void warmUp();

    /// Adopts `other`'s back/forward list.
    void takeHistoryOf(const NativeWebView& other);

    void load(const std::string& url);
    /// Ends a load that is under way; nothing more of it is reported.
    void stop();
    bool isLoading() const { return currentLoad == Load::page; }

    /// Loads the page again, or what the error page could not load. Does nothing at a command URL and at
    /// the start page, nor while the application loads another page. A form is not sent again.
    void reload();

    /// URL of the page, or of the one that the application loads; nothing before the first load.
    std::optional<std::string> url() const;

    /// Shows the engine's inspector, if developer tools are enabled.
    void inspect();

    bool is(WebKitWebView* other) const { return view.get() == other; }

    /// Opens a file, or a page that this view may not show, in the default browser, or tells that it cannot
    /// be opened; `reason` is that of the error page for a command URL.
    void openInBrowser(const std::string& url, WebKitURIRequest* request, const FailureReason& reason);

    /// Calls `close`, now or later, unless the page that is there objects to the closing of its window and
    /// the user agrees with it. Only a page of the web may object.
    void askBeforeClosing(std::function<void()> close);

    /// Shows in place of the page at `url` that it could not be loaded, and why. A page that this view may
    /// not show is never offered again.
    void showErrorPage(const std::string& url, const FailureReason& reason, bool canTryAgain = true);
    /// The same, a little later, if the page that has loaded is an HTTP error with an empty body. A command
    /// that it has run is not offered again.
    void replaceEmptyErrorResponse();

private:
    /// What the latest load of the main frame is.
    enum class Load {
        none,       ///< finished, or not begun
        page,       ///< under way, and worth reporting
        failed,     ///< failed or interrupted; WebKitGTK still says that it finished
        errorPage,  ///< our own page in place of a failed one; nothing of it is reported
    };

    void bindSignals();
    void onLoadChanged(WebKitLoadEvent event);
    /// URL of the load under way.
    std::string loadingURL() const;
    bool canReload() const;
    bool onAuthenticate(WebKitAuthenticationRequest* request);
    void onCommitted();
    void onLoadFailed(const char* url, const GError& error);
    bool onDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    void onNavigation(WebKitNavigationPolicyDecision* decision);
    bool onResponse(WebKitResponsePolicyDecision* decision);
    /// Nothing if the answer of the main frame is a page that belongs here.
    std::optional<FailureReason> reasonNotToShow(const std::string& url,
                                                 WebKitResponsePolicyDecision* decision) const;
    void onScriptDialog(WebKitScriptDialog* dialog);
    void onProcessTerminated();

    NativeWebViewOwner& owner;
    GObjectPtr<WebKitWebView> view;
    Load currentLoad = Load::none;
    std::string requestedURL;              ///< asked for by `load` and not committed yet
    bool showsStartPage = false;           ///< the page that is there is the start page
    bool errorPageRequested = false;       ///< the next load to start is our own page
    bool reloadRequested = false;          ///< the next decision about a reload is about that of `reload`
    std::optional<FailedLoad> failedLoad;  ///< what the error page is about, while it is there
    AnswerWait answerWait;
    GObjectPtr<GSimpleAction> reloadAction{g_simple_action_new("reload", nullptr)};
    RefusedLinks refusedLinks;
    PageClosing closing{view.get()};
    NewWindows newWindows{[this](const std::string& url) { owner.newWindowRequested(url); }};
    std::vector<SignalConnection> connections;
};

}  // namespace vok
