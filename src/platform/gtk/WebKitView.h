#pragma once

#include "platform/WebView.h"
#include "platform/gtk/AlertSheet.h"
#include "platform/gtk/Signal.h"

#include <gtkmm/widget.h>
#include <webkit/webkit.h>

#include <vector>

namespace vok {

/// The web view by WebKitGTK. Keeps nothing on disk.
class WebKitView final : public WebView, private WebFrame {
public:
    /// `onProgress` hears of the load's progress, from 0 to 1.
    WebKitView(std::function<void(double)> onProgress, std::function<void(Alert)> showSheet);
    void setZoomLevel(double level);

    Gtk::Widget& widget() { return *Glib::wrap(GTK_WIDGET(view.get())); }

    WebFrame& mainFrame() override { return *this; }
    std::optional<std::string> mainFrameURL() const override;
    /// Yes is all there is: the view is a part of its window.
    void setShouldCloseWithWindow(bool) override {}
    void setShouldUpdateWhileOffscreen(bool update) override;
    void setFrameLoadDelegate(WebFrameLoadDelegate& delegate) override { frameLoadDelegate = &delegate; }
    void setPolicyDelegate(WebPolicyDelegate& delegate) override { policyDelegate = &delegate; }
    void setUIDelegate(WebUIDelegate& delegate) override { uiDelegate = &delegate; }

private:
    WebView& webView() override { return *this; }
    void loadRequest(const std::string& url) override;

    /// What the latest load of the main frame is.
    enum class Load {
        none,         ///< finished, or not begun
        page,         ///< under way, and worth reporting
        failed,       ///< failed or interrupted; WebKitGTK still says that it finished
        failurePage,  ///< our own page in place of a failed one; nothing of it is reported
    };

    void bindSignals();
    void onLoadChanged(WebKitLoadEvent event);
    void awaitAnswer();
    void onCommitted();
    void onFinished();
    void onLoadFailed(const char* url, const GError& error);
    void showFailurePage(const std::string& url, const std::string& reason);
    bool onDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
    bool onResponse(WebKitResponsePolicyDecision* decision);
    void onDownloadStarted(WebKitDownload* download);
    void onCreate(WebKitNavigationAction* action);
    void onProcessTerminated();

    GObjectPtr<WebKitWebView> view;
    WebFrameLoadDelegate* frameLoadDelegate = nullptr;
    WebPolicyDelegate* policyDelegate = nullptr;
    WebUIDelegate* uiDelegate = nullptr;
    Load load = Load::none;
    std::string requestedURL;           ///< asked for by loadRequest and not committed yet
    bool failurePageRequested = false;  ///< the next load to start is our own page
    sigc::connection silence;           ///< ends a load whose server says nothing
    std::function<void(double)> onProgress;
    std::function<void(Alert)> showSheet;
    std::vector<SignalConnection> connections;
};

}  // namespace vok
