#include "platform/gtk/UriHandlerWorkspace.h"

#include "foundation/Log.h"
#include "platform/gtk/Renderer.h"

#include <gdkmm/applaunchcontext.h>
#include <gdkmm/display.h>
#include <giomm/appinfo.h>

namespace vok {

void UriHandlerWorkspace::openURL(const std::string& url) {
    const auto context = Gdk::Display::get_default()->get_app_launch_context();
    withoutPlainRenderer(context);
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
