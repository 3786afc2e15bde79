#include "platform/Application.h"

#include "foundation/Log.h"
#include "platform/gtk/services/ExecutableBundle.h"
#include "platform/gtk/services/MessageBus.h"
#include "platform/gtk/start/GtkApplication.h"
#include "platform/gtk/start/Renderer.h"
#include "platform/shared/CommandLine.h"

#include <giomm/init.h>
#include <glibmm/exceptionhandler.h>

#include <cstdio>

namespace vok {

/// The order matters: the environment variables of GTK and WebKitGTK must be set before GTK starts.
int ApplicationMain(int argc, char* argv[], ApplicationDelegateMaker makeDelegate) {
    if (const auto answer = commandLineAnswer(argc, argv, ExecutableBundle())) {
        std::fputs(answer->c_str(), stdout);
        return 0;
    }
    Gio::init();
    Renderer renderer;
    const MessageBuses buses;
    if (!gtk_init_check()) {
        Log("The installer needs a graphical desktop, but no display could be opened.");
        return 1;
    }
    Glib::add_exception_handler([] { shielded([] { throw; }); });
    return GtkApplication(renderer, std::move(makeDelegate)).run();
}

}  // namespace vok
