#include "platform/gtk/start/KeyboardShortcuts.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace vok {

namespace {

constexpr double zoomFactor = 1.2;
constexpr int maxZoomSteps = 6;  // about 0.33 to 3

struct Shortcut {
    const char* action;
    std::vector<Glib::ustring> keys;
};

const auto shortcuts = std::to_array<Shortcut>({
    {"app.quit", {"<Control>q"}},
    {"window.close", {"<Control>w"}},
    {"win.reload", {"F5", "<Control>r"}},
    {"win.inspect", {"F12"}},
    {"win.zoom-in", {"<Control>plus", "<Control>equal", "<Control>KP_Add"}},
    {"win.zoom-out", {"<Control>minus", "<Control>KP_Subtract"}},
    {"win.actual-size", {"<Control>0", "<Control>KP_0"}},
});

}  // namespace

void addKeyboardShortcuts(Gtk::Application& application, Gtk::ApplicationWindow& window,
                          std::function<void(double)> zoomPage, const std::function<void()>& reloadPage,
                          const std::function<void()>& inspectPage) {
    const auto steps = std::make_shared<int>(0);
    const auto zoomTo = [steps, zoomPage = std::move(zoomPage)](int wanted) {
        *steps = std::clamp(wanted, -maxZoomSteps, maxZoomSteps);
        zoomPage(std::pow(zoomFactor, *steps));
    };
    window.add_action("reload", reloadPage);
    window.add_action("inspect", inspectPage);
    application.add_action("quit", [&window] { window.close(); });
    window.add_action("zoom-in", [=] { zoomTo(*steps + 1); });
    window.add_action("zoom-out", [=] { zoomTo(*steps - 1); });
    window.add_action("actual-size", [=] { zoomTo(0); });
    for (const auto& [action, keys] : shortcuts)
        application.set_accels_for_action(action, keys);
}

}  // namespace vok
