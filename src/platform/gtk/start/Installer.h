#pragma once

#include "platform/Application.h"

#include "platform/Platform.h"
#include "platform/gtk/services/GlibURLParser.h"
#include "platform/gtk/services/LinuxMachine.h"
#include "platform/gtk/services/UriHandlerWorkspace.h"
#include "platform/gtk/start/ColorScheme.h"
#include "platform/gtk/web/WebKitView.h"
#include "platform/gtk/window/GtkWindow.h"

namespace vok {

/// Window, web view, services and the delegate that drives them.
class Installer {
public:
    /// Everything but `makeDelegate` is borrowed and outlives the installer.
    Installer(Application& application, const Bundle& bundle, const PropertyListReader& propertyLists,
              bool plainRenderer, const std::string& iconName, const ApplicationDelegateMaker& makeDelegate);

    void zoomPage(double level) { webView.setZoomLevel(level); }
    void reloadPage() { webView.reload(); }
    void inspectPage() { webView.inspect(); }
    void present() { window.present(); }
    Gtk::ApplicationWindow& mainWindow() { return window.gtkWindow(); }
    ApplicationDelegate& applicationDelegate() { return *delegate; }

private:
    UriHandlerWorkspace workspace;
    GlibURLParser urls;
    LinuxMachine machine;
    ColorScheme colorScheme;
    GtkWindow window;
    WebKitView webView;
    std::unique_ptr<ApplicationDelegate> delegate;
};

}  // namespace vok
