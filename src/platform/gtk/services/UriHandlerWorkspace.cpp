#include "platform/gtk/services/UriHandlerWorkspace.h"

#include "foundation/Log.h"

#include <gdk/gdk.h>
#include <gdkmm/applaunchcontext.h>
#include <giomm/appinfo.h>

namespace vok {

void UriHandlerWorkspace::openURL(const std::string& url) {
    // gtkmm's own call adds a reference that nobody gives back (seen with gtkmm 4.8).
    const auto context = Glib::wrap(gdk_display_get_app_launch_context(gdk_display_get_default()));
    Gio::AppInfo::launch_default_for_uri_async(
        url, context, [url](const Glib::RefPtr<Gio::AsyncResult>& result) {
            try {
                Gio::AppInfo::launch_default_for_uri_finish(result);
            } catch (const Glib::Error& error) {
                Log("Failed to open '%@' in the default browser (%s).", url, error.what());
            }
        });
}

}  // namespace vok
