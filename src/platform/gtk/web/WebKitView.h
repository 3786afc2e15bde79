#pragma once

#include "platform/WebView.h"
#include "platform/Workspace.h"
#include "platform/gtk/web/NativeWebView.h"

#include <gtkmm/overlay.h>

#include <functional>
#include <memory>

namespace vok {

/// The web view, with WebKitGTK. Stores nothing on disk.
///
/// A local page and a web page never share a process, and starting one takes longer than anything else before
/// the first web page. So there are two native views at first: one is shown, the other is below it with its
/// process already running. The first web page is loaded there and shown as soon as it commits; then the
/// first view is destroyed. If the first view navigates to a web page by itself, it stays and the other one
/// is destroyed.
class WebKitView final : public WebView, private WebFrame, private NativeWebViewOwner {
public:
    /// `workspace` is borrowed and outlives the view. `onProgress` is called with the load's progress, from 0
    /// to 1.
    WebKitView(Workspace& workspace, bool plainRenderer, std::function<void(double)> onProgress,
               std::function<void(Alert)> showSheet);
    void setZoomLevel(double level);
    /// Reloads the page, unless that would run a command.
    void reload() { active->reload(); }
    /// Shows the inspector, if developer tools are enabled.
    void inspect() { shown->inspect(); }

    Gtk::Widget& widget() { return layers; }

    /// Calls `close`, now or later, unless the page objects to the closing of its window and the user agrees.
    void askBeforeClosing(std::function<void()> close) { shown->askBeforeClosing(std::move(close)); }

    WebFrame& mainFrame() override { return *this; }
    std::optional<std::string> mainFrameURL() const override;
    void setShouldUpdateWhileOffscreen(bool update) override;
    void setPreferredLanguage(const std::string& code) override { session.setPreferredLanguage(code); }
    void enableDeveloperTools() override { session.enableDeveloperTools(); }
    void setFrameLoadDelegate(WebFrameLoadDelegate& delegate) override { frameLoadDelegate = &delegate; }
    void setPolicyDelegate(WebPolicyDelegate& delegate) override { policyDelegate = &delegate; }
    void setUIDelegate(WebUIDelegate& delegate) override { uiDelegate = &delegate; }

private:
    WebView& webView() override { return *this; }
    void loadRequest(const std::string& url) override;

    void loadStarted(NativeWebView& view) override;
    void loadCommitted(NativeWebView& view) override;
    void loadFinished(NativeWebView& view) override;
    void loadProgressed(double progress) override { onProgress(progress); }
    void processTerminated(NativeWebView& view) override;
    bool isCommandURL(const std::string& url) const override;
    bool mayShowPage(const std::string& url) const override;
    std::string startURL() const override;
    bool allowsNavigation(const std::string& url, bool isApplicationLoad) override;
    void newWindowRequested(const std::string& requestURL) override;
    void openElsewhere(const std::string& url) override { workspace.openURL(url); }
    void alertRequested(Alert alert) override;

    std::unique_ptr<NativeWebView> makeNativeView();
    void onDownload(WebKitDownload* download);
    /// Only the latest load counts. These select the view that has it.
    void activateNext();
    void activateShown();
    void showNext();
    void dropNext();

    Workspace& workspace;
    std::function<void(double)> onProgress;
    std::function<void(Alert)> showSheet;
    struct : WebFrameLoadDelegate, WebPolicyDelegate, WebUIDelegate {
    } noDelegate;
    WebFrameLoadDelegate* frameLoadDelegate = &noDelegate;
    WebPolicyDelegate* policyDelegate = &noDelegate;
    WebUIDelegate* uiDelegate = &noDelegate;
    Gtk::Overlay layers;
    WebKitSession session;
    std::unique_ptr<NativeWebView> shown;
    std::unique_ptr<NativeWebView> next;  ///< null once the first web page has committed in either view
    NativeWebView* active;                ///< the view of the latest load, one of the two
};

}  // namespace vok
