#pragma once

#include "platform/WebView.h"
#include "platform/macos/NewWindows.h"
#include "platform/shared/ErrorPage.h"

#include <functional>
#include <utility>

@class VOKWebViewDelegate;

namespace vok {

class WebKitView;
class Workspace;

// The engine's classes have the same names as the port's interfaces.
using EngineView = ::WebView;
using EngineFrame = ::WebFrame;

/// A frame of the view. The main frame's object lives as long as the view, other ones for one callback.
class WebKitFrame final : public WebFrame {
public:
    WebKitFrame(WebKitView& holder, EngineFrame* engineFrame) : view(holder), frame(engineFrame) {}

    WebView& webView() override;
    void loadRequest(const std::string& url) override;

    /// Shows the error page for a page that could not be loaded. Its load is not reported.
    void showErrorPage(const std::string& url, const FailureReason& reason, bool canTryAgain = true);

private:
    WebKitView& view;
    EngineFrame* frame;
};

/// The web view, with WebKit's WebView class. Stores nothing on disk.
class WebKitView final : public WebView {
public:
    /// `workspace` is borrowed. `showMessage` shows a string in a sheet on the window.
    WebKitView(Workspace& workspace, std::function<void(const std::string&)> showMessage);
    WebKitView(const WebKitView&) = delete;
    ~WebKitView() override;

    NSView* nsView() const { return view; }

    WebKitFrame& mainFrame() override { return main; }
    std::optional<std::string> mainFrameURL() const override;
    void setShouldCloseWithWindow(bool close) override;
    void setShouldUpdateWhileOffscreen(bool update) override;
    void setPreferredLanguage(const std::string& code) override;
    void setFrameLoadDelegate(WebFrameLoadDelegate& delegate) override;
    void setPolicyDelegate(WebPolicyDelegate& delegate) override;
    void setUIDelegate(WebUIDelegate& delegate) override;

    // What the engine reports about the main frame.

    /// The next load is one that the application has requested.
    void beginApplicationLoad() { isApplicationLoad = true; }
    /// Whether the application has requested the current load; clears the mark.
    bool takeApplicationLoad() { return std::exchange(isApplicationLoad, false); }
    void loadCommitted();

    /// Asks the policy delegate. A URL that the view cannot load is opened by the desktop, and the page
    /// stays, unless the application has requested it.
    bool allowsNavigation(const std::string& url);
    /// Opens `url` in the default browser, and the page stays. `reason` is for the error page at a command
    /// URL.
    void openInBrowser(const std::string& url, const std::string& method, const FailureReason& reason);
    EngineView* openNewWindow() { return newWindows.open(view); }

private:
    void newWindowRequested(const std::string& url);

    Workspace& workspace;
    std::function<void(const std::string&)> onMessage;
    EngineView* view;
    WebKitFrame main;
    VOKWebViewDelegate* callbacks;   ///< the engine's view does not retain it
    id<NSObject> activity;           ///< keeps the system from suspending the hidden program
    bool isApplicationLoad = false;  ///< until the page commits
    NewWindows newWindows{[this](const std::string& url) { newWindowRequested(url); }};
};

}  // namespace vok
