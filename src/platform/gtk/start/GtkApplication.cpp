#include "platform/gtk/start/GtkApplication.h"

#include "foundation/Log.h"
#include "platform/gtk/services/LinuxMachine.h"
#include "platform/gtk/start/KeyboardShortcuts.h"
#include "platform/gtk/start/Sandbox.h"
#include "platform/shared/WindowTitle.h"
#include "texts/Texts.h"

#include <glibmm/main.h>
#include <gtkmm/icontheme.h>

#include <cmath>

namespace vok {

namespace {

/// The bundle's identifier, which identifies the running instance and names the icon. One that D-Bus does not
/// accept counts as missing.
std::string applicationId(const Bundle& bundle) {
    const auto info = bundle.infoDictionary();
    const auto identifier = info.find("CFBundleIdentifier");
    const bool usable = identifier != info.end() && g_application_id_is_valid(identifier->second.c_str());
    return usable ? identifier->second : "org.vok.Installer";
}

/// Calls `prepare` in the first instance of the program alone, before GTK starts.
class FirstInstance final : public Gtk::Application {
public:
    FirstInstance(const std::string& id, std::function<void()> beforeStartup)
        : Gtk::Application(id), prepare(std::move(beforeStartup)) {}

private:
    void on_startup() override {
        shielded(prepare);
        Gtk::Application::on_startup();
    }

    std::function<void()> prepare;
};

}  // namespace

GtkApplication::GtkApplication(const Renderer& choice, ApplicationDelegateMaker maker)
    : renderer(choice), makeDelegate(std::move(maker)),
      application(Glib::make_refptr_for_instance<Gtk::Application>(
          new FirstInstance(applicationId(bundle), [this] { onStartup(); }))) {
    g_set_prgname(application->get_id().c_str());  // the class of the window on X11
    application->signal_activate().connect([this] { shielded([this] { onActivate(); }); });
    windowRemoved = application->signal_window_removed().connect([this](Gtk::Window*) { onWindowRemoved(); });
}

int GtkApplication::run() {
    const int status = application->run();
    windowRemoved.disconnect();
    return status;
}

void GtkApplication::terminate() { application->quit(); }

void GtkApplication::performAfterDelay(double seconds, std::function<void()> perform) {
    const auto interval = static_cast<unsigned>(std::lround(seconds * 1000));
    Glib::signal_timeout().connect_once([perform = std::move(perform)] { shielded(perform); }, interval);
}

/// The web view's processes take longest to start, so the splash page is loaded before anything is drawn.
void GtkApplication::onStartup() {
    if (sandboxForbidden())
        return;
    installer = std::make_unique<Installer>(*this, renderer.isPlain(), application->get_id(), makeDelegate);
    installer->delegate->applicationDidFinishLaunching();
}

/// The first start shows the window; later starts call this from their own process.
void GtkApplication::onActivate() {
    if (std::exchange(isActive, true))
        return bringForward();
    application->hold();
    Gtk::IconTheme::get_for_display(Gdk::Display::get_default())
        ->add_search_path(bundle.bundlePath() + "/Contents/Resources/icons");
    if (installer)
        showPages();
    else
        showRefusal();
}

/// On Wayland the window may be hidden and shown again. gtkmm removes a hidden window from the application.
void GtkApplication::bringForward() {
    if (refusal)
        return refusal->present();
    windowRemoved.block();
    installer->window.present();
    if (application->get_windows().empty())
        application->add_window(installer->window.gtkWindow());
    windowRemoved.unblock();
}

void GtkApplication::showPages() {
    auto& window = installer->window;
    application->add_window(window.gtkWindow());
    addKeyboardShortcuts(*application.get(), window.gtkWindow(), installer->webView);
    window.present();
    renderer.restoreEnvironment();
}

/// The configuration, which may select another language, is not read yet.
void GtkApplication::showRefusal() {
    Log("%@", sandboxAdvice());
    if (const auto languages = LinuxMachine().preferredLanguages(); languages && !languages->empty())
        useLanguage(languages->front());
    refusal = std::make_unique<GtkWindow>(windowTitle(bundle), application->get_id());
    application->add_window(refusal->gtkWindow());
    refusal->beginAlertSheet(
        {AlertStyle::critical, "Error", "OK", sandboxAdvice(), {}, [this](bool) { terminate(); }});
    refusal->present();
}

void GtkApplication::onWindowRemoved() {
    if (application->get_windows().empty() &&
        (!installer || installer->delegate->applicationShouldTerminateAfterLastWindowClosed()))
        terminate();
}

}  // namespace vok
