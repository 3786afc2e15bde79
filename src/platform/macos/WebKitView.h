#pragma once

#include "platform/WebView.h"
#include "platform/macos/NewWindows.h"
#include "platform/shared/FailurePage.h"

#include <functional>
#include <utility>

@class VOKWebViewDelegate;

namespace vok {

class WebKitView;
class Workspace;

// The engine's classes bear the names of the port's interfaces.
using EngineView = ::WebView;
using EngineFrame = ::WebFrame;

/// A frame of the view: the main frame's object lives as long as the view, another frame's for one callback.
class WebKitFrame final : public WebFrame {
public:
    WebKitFrame(WebKitView& holder, EngineFrame* engineFrame) : view(holder), frame(engineFrame) {}

    WebView& webView() override;
    void loadRequest(const std::string& url) override;

    /// Shows the error page in place of one that could not be loaded; nothing of its load is reported.
    void showFailurePage(const std::string& url, const FailureReason& reason, bool canTryAgain = true);

private:
    WebKitView& view;
    EngineFrame* frame;
};

/// The web view by the WebView class. Keeps nothing on disk.
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

    // What the engine reports of the main frame.

    /// The application has asked for the page that loads next.
    void beginApplicationLoad() { isApplicationLoad = true; }
    /// Has the application asked for the page that loads? From now on, no longer.
    bool takeApplicationLoad() { return std::exchange(isApplicationLoad, false); }
    void loadCommitted();

    /// Asks the policy delegate. An address that the view cannot load is handed to the desktop, and the page
    /// stays, unless the application has asked for it.
    bool allowsNavigation(const std::string& url);
    /// Hands what a page got from `url` to the default browser, and the page stays. `reason` is for a command
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
    id<NSObject> activity;           ///< while it lasts, the hidden program is not put to sleep
    bool isApplicationLoad = false;  ///< until the page commits
    NewWindows newWindows{[this](const std::string& url) { newWindowRequested(url); }};
};

}  // namespace vok
