#pragma once

#include "platform/gtk/support/Signal.h"

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace vok {

/// A network session that stores nothing on disk, with the settings and the downloads of the web view.
class WebKitSession {
public:
    /// `onDownload` is called with each download. It is cancelled: WebKitGTK would save the file by itself.
    WebKitSession(bool plainRenderer, std::function<void(WebKitDownload* download)> onDownload);

    GObjectPtr<WebKitWebView> makeView() const;

    /// The language, as in WebView::setPreferredLanguage.
    void setPreferredLanguage(const std::string& code);

    void enableDeveloperTools();

    /// Whether pages run at full speed while their window is hidden.
    void setFullSpeedWhileHidden(bool fullSpeed);

private:
    GObjectPtr<WebKitSettings> settings;
    GObjectPtr<WebKitNetworkSession> network;
    SignalConnection downloadStarted;
};

}  // namespace vok
