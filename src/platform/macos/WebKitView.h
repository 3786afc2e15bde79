#pragma once

#include "platform/WebView.h"
#include "platform/macos/NewWindows.h"
#include "platform/shared/ErrorPage.h"

#include <functional>
#include <utility>

@class VOKWebViewDelegate;

namespace vok {

class Workspace;

// The engine's classes have the same names as the port's interfaces.
using EngineView = ::WebView;
using EngineFrame = ::WebFrame;

/// The web view, with WebKit's WebView class. Stores nothing on disk. Reports only its main frame.
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

    /// Reloads the page with `reloadPage` or, on the error page, loads the failed URL. Does nothing at a
    /// command URL, on the start page and while the application loads another page. A form is not sent again.
    void reload(const std::function<void()>& reloadPage);
    /// Shows the error page for a page that could not be loaded. Its load is not reported.
    void showErrorPage(const std::string& url, const FailureReason& reason, bool canTryAgain = true);

    // What the engine reports about the main frame.

    /// Whether the application has requested the current load; clears the mark.
    bool takeApplicationLoad() { return !std::exchange(requestedURL, {}).empty(); }
    void loadCommitted();
    /// A script may have stopped the load. If the start page is still shown, the error page replaces it.
    void loadInterrupted();
    /// Returns whether the loaded page is reported. If the engine has refused a URL and loaded an empty page
    /// instead, shows the error page and returns false.
    bool acceptsLoadedPage();

    /// Returns whether the view follows a navigation to `url`. `firstURL` is the URL before any redirect.
    bool allowsNavigation(const std::string& url, NSURL* firstURL);
    /// Opens `url` in the default browser; the page stays. `reason` is for the error page at a command URL.
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
    id<NSObject> activity;          ///< keeps the system from suspending the hidden program
    std::string requestedURL;       ///< requested by `load` and not committed yet
    NSURL* decidedURL;              ///< the same, as normalised by the engine; nil before its policy decision
    std::string refusedURL;         ///< the engine has loaded an empty page instead
    std::string tryAgainURL;        ///< what "Try again" loads; empty if not offered
    NewWindows newWindows;
};

}  // namespace vok
