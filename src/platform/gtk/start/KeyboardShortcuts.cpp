#include "platform/gtk/start/KeyboardShortcuts.h"

#include "platform/gtk/web/WebKitView.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace vok {

constexpr double zoomFactor = 1.2;
constexpr int maxZoomSteps = 6;  // about 0.33 to 3

void addKeyboardShortcuts(Gtk::Application& application, Gtk::ApplicationWindow& window, WebKitView& view) {
    const auto steps = std::make_shared<int>(0);
    const auto zoomTo = [steps, &view](int wanted) {
        *steps = std::clamp(wanted, -maxZoomSteps, maxZoomSteps);
        view.setZoomLevel(std::pow(zoomFactor, *steps));
    };
    application.add_action("quit", [&window] { window.close(); });
    window.add_action("reload", [&view] { view.reload(); });
    window.add_action("inspect", [&view] { view.inspect(); });
    window.add_action("zoom-in", [=] { zoomTo(*steps + 1); });
    window.add_action("zoom-out", [=] { zoomTo(*steps - 1); });
    window.add_action("actual-size", [=] { zoomTo(0); });
    application.set_accels_for_action("app.quit", {"<Control>q"});
    application.set_accels_for_action("window.close", {"<Control>w"});
    application.set_accels_for_action("win.reload", {"F5", "<Control>r"});
    application.set_accels_for_action("win.inspect", {"F12"});
    application.set_accels_for_action("win.zoom-in", {"<Control>plus", "<Control>equal", "<Control>KP_Add"});
    application.set_accels_for_action("win.zoom-out", {"<Control>minus", "<Control>KP_Subtract"});
    application.set_accels_for_action("win.actual-size", {"<Control>0", "<Control>KP_0"});
}

}  // namespace vok
