#pragma once

#include "platform/Application.h"
#include "platform/Platform.h"
#include "platform/gtk/services/ExecutableBundle.h"
#include "platform/gtk/services/GlibURLParser.h"
#include "platform/gtk/services/LinuxMachine.h"
#include "platform/gtk/services/PlistReader.h"
#include "platform/gtk/services/UriHandlerWorkspace.h"
#include "platform/gtk/start/ColorScheme.h"
#include "platform/gtk/web/WebKitView.h"
#include "platform/gtk/window/GtkWindow.h"
#include "platform/shared/WindowTitle.h"

namespace vok {

/// Window, web view, services and the delegate that drives them.
struct Installer {
    /// `application` is borrowed and outlives the installer.
    Installer(Application& application, bool plainRenderer, const std::string& iconName,
              const ApplicationDelegateMaker& makeDelegate)
        : window(windowTitle(bundle), iconName),
          webView(
              workspace, plainRenderer, [this](double progress) { window.showLoadProgress(progress); },
              [this](Alert alert) { window.beginAlertSheet(std::move(alert)); }),
          delegate(
              makeDelegate({application, window, webView, workspace, bundle, propertyLists, urls, machine})) {
        window.setPage(webView.widget());
        window.setAskBeforeClosing([this](auto close) { webView.askBeforeClosing(std::move(close)); });
    }

    UriHandlerWorkspace workspace;
    ExecutableBundle bundle;
    PlistReader propertyLists;
    GlibURLParser urls;
    LinuxMachine machine;
    ColorScheme colorScheme;
    GtkWindow window;
    WebKitView webView;
    std::unique_ptr<ApplicationDelegate> delegate;
};

}  // namespace vok
