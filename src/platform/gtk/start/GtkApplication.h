#pragma once

#include "platform/Application.h"
#include "platform/gtk/start/Installer.h"
#include "platform/gtk/start/Renderer.h"

#include <gtkmm/application.h>

namespace vok {

/// The running GTK application. A second start brings this window forward and exits.
class GtkApplication final : public Application {
public:
    /// `renderer` is borrowed and outlives the application.
    GtkApplication(const Renderer& renderer, ApplicationDelegateMaker makeDelegate);

    /// Runs the main loop, without the program's arguments, and returns the program's exit status.
    int run();

    void terminate() override;
    void performAfterDelay(double seconds, std::function<void()> perform) override;

private:
    void onStartup();
    void onActivate();
    void bringForward();
    void showPages();
    void showRefusal();
    void onWindowRemoved();

    const Renderer& renderer;
    ApplicationDelegateMaker makeDelegate;
    ExecutableBundle bundle;
    Glib::RefPtr<Gtk::Application> application;
    sigc::connection windowRemoved;
    bool isActive = false;
    std::unique_ptr<Installer> installer;
    std::unique_ptr<GtkWindow> refusal;  ///< the only window if the web view cannot start
};

}  // namespace vok
