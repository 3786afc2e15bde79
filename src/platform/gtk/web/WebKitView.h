#pragma once

#include "platform/WebView.h"
#include "platform/Workspace.h"
#include "platform/gtk/web/NativeWebView.h"

#include <functional>

namespace vok {

/// The web view, with WebKitGTK. Stores nothing on disk.
class WebKitView final : public WebView, private WebFrame, private NativeWebViewOwner {
public:
    /// `workspace` is borrowed and outlives the view. `onProgress` is called with the load's progress, from 0
    /// to 1.
    WebKitView(Workspace& workspace, bool plainRenderer, std::function<void(double)> onProgress,
               std::function<void(Alert)> showSheet);
    void setZoomLevel(double level) { view.setZoomLevel(level); }
    /// Reloads the page; one that would run a command only in developer mode, after a question.
    void reload() { view.reload(); }
    /// Shows the inspector, if developer tools are enabled.
    void inspect() { view.inspect(); }

    Gtk::Widget& widget() { return view.widget(); }

    /// Calls `close`, now or later, unless the page objects to the closing of its window and the user agrees.
    void askBeforeClosing(std::function<void()> close) { view.askBeforeClosing(std::move(close)); }

    WebFrame& mainFrame() override { return *this; }
    std::optional<std::string> mainFrameURL() const override { return view.url(); }
    void setShouldUpdateWhileOffscreen(bool update) override { session.setFullSpeedWhileHidden(update); }
    void setPreferredLanguage(const std::string& code) override { session.setPreferredLanguage(code); }
    void enableDeveloperTools() override;
    void setFrameLoadDelegate(WebFrameLoadDelegate& delegate) override { frameLoadDelegate = &delegate; }
    void setPolicyDelegate(WebPolicyDelegate& delegate) override { policyDelegate = &delegate; }
    void setUIDelegate(WebUIDelegate& delegate) override { uiDelegate = &delegate; }

private:
    WebView& webView() override { return *this; }
    void loadRequest(const std::string& url) override { view.load(url); }

    void loadStarted() override;
    void loadFinished() override;
    void loadProgressed(double progress) override { onProgress(progress); }
    void processTerminated() override;
    bool isCommandURL(const std::string& url) const override;
    bool mayShowPage(const std::string& url) const override;
    std::string startURL() const override;
    bool allowsNavigation(const std::string& url, bool isApplicationLoad) override;
    void newWindowRequested(const std::string& requestURL) override;
    void openElsewhere(const std::string& url) override { workspace.openURL(url); }
    void alertRequested(Alert alert) override;

    void onDownload(WebKitDownload* download);

    Workspace& workspace;
    std::function<void(double)> onProgress;
    std::function<void(Alert)> showSheet;
    struct : WebFrameLoadDelegate, WebPolicyDelegate, WebUIDelegate {
    } noDelegate;
    WebFrameLoadDelegate* frameLoadDelegate = &noDelegate;
    WebPolicyDelegate* policyDelegate = &noDelegate;
    WebUIDelegate* uiDelegate = &noDelegate;
    WebKitSession session;
    NativeWebView view;
};

}  // namespace vok
