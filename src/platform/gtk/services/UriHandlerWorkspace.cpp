#include "platform/gtk/services/UriHandlerWorkspace.h"

#include "foundation/Log.h"
#include "platform/gtk/services/DesktopBrowser.h"

#include <gdk/gdk.h>
#include <gdkmm/applaunchcontext.h>
#include <giomm/desktopappinfo.h>

namespace vok {

namespace {

/// The launch context that brings a started program's window to the front.
Glib::RefPtr<Gio::AppLaunchContext> launchContext() {
    // gtkmm's own call leaks a reference (seen with gtkmm 4.8).
    return Glib::wrap(gdk_display_get_app_launch_context(gdk_display_get_default()));
}

}  // namespace

void UriHandlerWorkspace::openURL(const std::string& url) {
    Gio::AppInfo::launch_default_for_uri_async(
        url, launchContext(), [url](const Glib::RefPtr<Gio::AsyncResult>& result) {
            try {
                Gio::AppInfo::launch_default_for_uri_finish(result);
            } catch (const Glib::Error& error) {
                Log("Failed to open '%@' in the default browser (%s).", url, error.what());
            }
        });
}

std::optional<std::string> UriHandlerWorkspace::browserVersion(const std::string& type) {
    const auto known = browserVersions.find(type);
    if (known != browserVersions.end())
        return known->second;
    const auto browser = desktopBrowser(type);
    return browserVersions[type] = browser ? versionOf(*browser) : std::nullopt;
}

void UriHandlerWorkspace::openFirefox() {
    const auto firefox = desktopBrowser("firefox");
    if (!firefox)
        return Log("Failed to start Firefox (it has no desktop entry).");
    try {
        firefox->launch(std::vector<Glib::RefPtr<Gio::File>>(), launchContext());
    } catch (const Glib::Error& error) {
        Log("Failed to start Firefox (%s).", error.what());
    }
}

}  // namespace vok
