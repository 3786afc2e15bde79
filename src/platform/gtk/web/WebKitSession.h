#pragma once

#include "platform/gtk/support/Signal.h"

#include <webkit/webkit.h>

#include <functional>
#include <string>

namespace vok {

/// What the web view is made of: a network session that stores nothing on disk, the settings, and the
/// downloads.
class WebKitSession {
public:
    /// `onDownload` is called with each download, which has been cancelled. Otherwise WebKitGTK would save
    /// the file in the user's download directory.
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
