#include "platform/Application.h"

#include "foundation/Log.h"
#include "platform/gtk/start/GtkApplication.h"
#include "platform/gtk/start/MessageBuses.h"
#include "platform/gtk/start/Renderer.h"

#include <giomm/init.h>
#include <glibmm/exceptionhandler.h>

namespace vok {

/// The order matters: what GTK and WebKitGTK read from the environment is set before GTK starts.
int ApplicationMain(int, char*[], ApplicationDelegateMaker makeDelegate) {
    Gio::init();
    Renderer renderer;
    const MessageBuses buses;
    if (!gtk_init_check()) {
        Log("The installer needs a graphical desktop: no display could be opened.");
        return 1;
    }
    Glib::add_exception_handler([] { shielded([] { throw; }); });
    return GtkApplication(renderer, std::move(makeDelegate)).run();
}

}  // namespace vok
