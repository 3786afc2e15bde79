#pragma once

#include "platform/WebView.h"
#include "platform/macos/NewWindows.h"
#include "platform/shared/FailurePage.h"

#include <functional>
#include <utility>

@class VOKWebViewDelegate;

namespace vok {

class Workspace;

// The engine's classes bear the names of the port's interfaces.
using EngineView = ::WebView;
using EngineFrame = ::WebFrame;

/// The web view by the WebView class. Keeps nothing on disk. Of its frames, the main frame alone is reported.
class WebKitView final : public WebView, private WebFrame {
public:
    /// `workspace` is borrowed. `showMessage` shows a string in a sheet on the window.
    WebKitView(Workspace& workspace, std::function<void(const std::string&)> showMessage);
    WebKitView(const WebKitView&) = delete;
    ~WebKitView() override;

    NSView* nsView() const { return view; }

    WebFrame& mainFrame() override { return *this; }
    std::optional<std::string> mainFrameURL() const override;
    void setShouldCloseWithWindow(bool close) override;
    void setShouldUpdateWhileOffscreen(bool update) override;
    void setPreferredLanguage(const std::string& code) override;
    void setFrameLoadDelegate(WebFrameLoadDelegate& delegate) override;
    void setPolicyDelegate(WebPolicyDelegate& delegate) override;
    void setUIDelegate(WebUIDelegate& delegate) override;

    /// Loads the page again by `reloadPage`, or what the error page could not load. Does nothing at a command
    /// URL and at the start page, nor while the application loads another page. A form is not sent again.
    void reload(const std::function<void()>& reloadPage);
    /// Shows the error page in place of one that could not be loaded; nothing of its load is reported.
    void showFailurePage(const std::string& url, const FailureReason& reason, bool canTryAgain = true);

    // What the engine reports of the main frame.

    /// Has the application asked for the page that loads? From now on, no longer.
    bool takeApplicationLoad() { return !std::exchange(requestedURL, {}).empty(); }
    void loadCommitted();
    /// A script may have stopped the load. The start page must not stay: it gives way to the error page.
    void loadInterrupted();
    /// Returns whether the page that has loaded is to be reported. An empty page that the engine has loaded
    /// in place of a refused address is not, and the error page takes its place.
    bool acceptsLoadedPage();

    /// May the view follow a navigation to `url`? `firstURL` is where it began, before any redirect.
    bool allowsNavigation(const std::string& url, NSURL* firstURL);
    /// Hands what a page got from `url` to the default browser, and the page stays. `reason` is for a command
    /// URL.
    void openInBrowser(const std::string& url, const std::string& method, const FailureReason& reason);
    EngineView* openNewWindow() { return newWindows.open(view); }

private:
    WebView& webView() override { return *this; }
    void loadRequest(const std::string& url) override;
    void load(const std::string& url);
    bool isLoadingRequest() const;
    bool showsStartPage() const;

    struct : WebPolicyDelegate {
    } noPolicy;
    Workspace& workspace;
    std::function<void(const std::string&)> onMessage;
    EngineView* view;
    VOKWebViewDelegate* callbacks;  ///< the engine's view does not retain it
    id<NSObject> activity;          ///< while it lasts, the hidden program is not put to sleep
    std::string requestedURL;       ///< asked for by `load` and not committed yet
    NSURL* decidedURL;              ///< the same, as the engine writes it; nil until it asks for the decision
    std::string refusedURL;         ///< in its place the engine has loaded an empty page
    std::string tryAgainURL;        ///< what the error page offers again; empty if it does not
    NewWindows newWindows;
};

}  // namespace vok
