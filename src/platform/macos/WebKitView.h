#pragma once

#include "platform/WebView.h"
#include "platform/shared/FailurePage.h"

#define DISABLE_LEGACY_WEBKIT_DEPRECATIONS  // the whole of WebView is deprecated, in favour of another class
#import <WebKit/WebKit.h>

@class VOKWebViewDelegate;

namespace vok {

// The engine's classes bear the names of the port's interfaces.
using EngineView = ::WebView;
using EngineFrame = ::WebFrame;

/// A frame of the view: the main frame's object lives as long as the view, another frame's for one callback.
class WebKitFrame final : public WebFrame {
public:
    WebKitFrame(WebView& holder, EngineFrame* engineFrame) : view(holder), frame(engineFrame) {}

    WebView& webView() override { return view; }
    void loadRequest(const std::string& url) override;

    /// Our own page in place of one that could not be loaded; nothing of its load is reported.
    void showFailurePage(const std::string& url, const FailureReason& reason, bool canTryAgain = true);

private:
    WebView& view;
    EngineFrame* frame;
};

/// The web view by the WebView class. Keeps nothing on disk.
class WebKitView final : public WebView {
public:
    WebKitView();
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

private:
    EngineView* view;
    WebKitFrame main;
    VOKWebViewDelegate* callbacks;  ///< the engine's view does not retain it
    id<NSObject> activity;          ///< while it lasts, the hidden program is not put to sleep
};

}  // namespace vok
