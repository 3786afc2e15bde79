#pragma once

#include "platform/WebView.h"
#include "platform/gtk/support/Signal.h"
#include "platform/gtk/web/AnswerTimeout.h"
#include "platform/gtk/web/WebKitSession.h"
#include "platform/gtk/window/Alert.h"

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
    virtual void decideNavigation(const std::string& requestURL, WebPolicyDecisionListener& listener) = 0;
    /// A page asks for a window of its own; the view itself opens none.
    virtual void newWindowRequested(const std::string& requestURL) = 0;
    /// A page's script has something to say or to ask.
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
    void stop();

    /// URL that is being loaded, or else of the page that is there; nothing before the first load.
    std::optional<std::string> url() const;

    bool is(WebKitWebView* other) const { return view.get() == other; }

    /// Shows in place of the page at `url` that it could not be loaded, and why.
    void showFailurePage(const std::string& url, const std::string& reason);
    /// The same, a little later, if the page that has loaded is an HTTP error with an empty body.
    void replaceEmptyErrorResponse();

private:
    /// What the latest load of the main frame is.
    enum class Load {
        none,         ///< finished, or not begun
        page,         ///< under way, and worth reporting
        failed,       ///< failed or interrupted; WebKitGTK still says that it finished
        failurePage,  ///< our own page in place of a failed one; nothing of it is reported
    };

    void bindSignals();
    void onLoadChanged(WebKitLoadEvent event);
    void onSilence();
    void onCommitted();
    void onLoadFailed(const char* url, const GError& error);
    bool onDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    bool onResponse(WebKitResponsePolicyDecision* decision);
    void onProcessTerminated();

    NativeWebViewOwner& owner;
    GObjectPtr<WebKitWebView> view;
    Load currentLoad = Load::none;
    std::string requestedURL;           ///< asked for by `load` and not committed yet
    bool failurePageRequested = false;  ///< the next load to start is our own page
    AnswerTimeout answerTimeout{[this] { onSilence(); }};
    std::vector<SignalConnection> connections;
};

}  // namespace vok
