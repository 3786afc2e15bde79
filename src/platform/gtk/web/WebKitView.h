#pragma once

#include "platform/WebView.h"
#include "platform/Workspace.h"
#include "platform/gtk/web/NativeWebView.h"

#include <gtkmm/overlay.h>

#include <functional>
#include <memory>

namespace vok {

/// The web view by WebKitGTK. Keeps nothing on disk.
///
/// A local page and a page of the web never share a process, and starting one takes longer than anything else
/// on the way to the first page of the web. So there are two native views at first: one is shown, the other
/// lies under it with its process running already. The first page of the web is loaded there and shown as
/// soon as it commits; then the first view goes. Should the first view come to a page of the web by itself,
/// it stays and the other one goes.
class WebKitView final : public WebView, private WebFrame, private NativeWebViewOwner {
public:
    /// `workspace` is borrowed and outlives the view. `onProgress` is called with the load's progress, from 0
    /// to 1.
    WebKitView(Workspace& workspace, bool plainRenderer, std::function<void(double)> onProgress,
               std::function<void(Alert)> showSheet);
    void setZoomLevel(double level);
    /// Loads the page again, as far as that runs no command.
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
    /// Of one web view's loads only the latest counts; these say which of the two views has it.
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
    std::unique_ptr<NativeWebView> next;  ///< null once the first page of the web has committed somewhere
    NativeWebView* active;                ///< the view of the latest load, one of the two
};

}  // namespace vok
