#include "foundation/Shielded.h"
#include "platform/Application.h"
#include "platform/Platform.h"
#include "platform/gtk/services/ExecutableBundle.h"
#include "platform/gtk/services/GlibURLParser.h"
#include "platform/gtk/services/LinuxMachine.h"
#include "platform/gtk/services/MessageBus.h"
#include "platform/gtk/services/PlistReader.h"
#include "platform/gtk/services/UriHandlerWorkspace.h"
#include "platform/gtk/start/ColorScheme.h"
#include "platform/gtk/start/KeyboardShortcuts.h"
#include "platform/gtk/start/Renderer.h"
#include "platform/gtk/start/Sandbox.h"
#include "platform/gtk/web/WebKitView.h"
#include "platform/gtk/window/GtkWindow.h"

#include <giomm/init.h>
#include <glibmm/exceptionhandler.h>
#include <glibmm/main.h>
#include <gtkmm/application.h>
#include <gtkmm/icontheme.h>

#include <cmath>

namespace vok {

namespace {

/// The bundle's identifier tells one product's running instance from another's, and names the icon. One that
/// D-Bus does not take counts as missing.
std::string applicationId(const Bundle& bundle) {
    const auto info = bundle.infoDictionary();
    const auto identifier = info.find("CFBundleIdentifier");
    const bool usable = identifier != info.end() && g_application_id_is_valid(identifier->second.c_str());
    return usable ? identifier->second : "org.vok.Installer";
}

std::string windowTitle(const Bundle& bundle) {
    const auto info = bundle.infoDictionary();
    const auto name = info.find("CFBundleDisplayName");
    return name == info.end() ? "Installer" : name->second;
}

/// Window, web view and the delegate that drives them.
class Installer {
public:
    Installer(Application& application, const Bundle& bundle, const PropertyListReader& propertyLists,
              const ApplicationDelegateMaker& makeDelegate)
        : window(windowTitle(bundle), applicationId(bundle)),
          webView([this](double progress) { window.showLoadProgress(progress); },
                  [this](Alert alert) {
                      alert.title = window.gtkWindow().get_title();
                      window.beginAlertSheet(std::move(alert));
                  }),
          delegate(
              makeDelegate({application, window, webView, workspace, bundle, propertyLists, urls, machine})) {
        window.setPage(webView.widget());
    }

    void zoomPage(double level) { webView.setZoomLevel(level); }
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

/// The running GTK application. A second start of the program ends at once and brings this window forward.
class GtkApplication final : public Application {
public:
    explicit GtkApplication(ApplicationDelegateMaker maker)
        : makeDelegate(std::move(maker)), bundle(propertyLists),
          application(Gtk::Application::create(applicationId(bundle))) {
        g_set_prgname(application->get_id().c_str());  // the class of the window on X11
        application->signal_activate().connect([this] { shielded([this] { onActivate(); }); });
        windowRemoved =
            application->signal_window_removed().connect([this](Gtk::Window*) { onWindowRemoved(); });
    }

    /// The program's arguments mean nothing, so the toolkit gets none.
    int run() {
        const int status = application->run();
        windowRemoved.disconnect();
        return status;
    }

    void terminate() override { application->quit(); }

    void performAfterDelay(double seconds, std::function<void()> perform) override {
        const auto interval = static_cast<unsigned>(std::lround(seconds * 1000));
        Glib::signal_timeout().connect_once([perform = std::move(perform)] { shielded(perform); }, interval);
    }

private:
    void onActivate() {
        if (const auto windows = application->get_windows(); !windows.empty()) {
            windows.front()->present();
            return;
        }
        application->hold();
        Gtk::IconTheme::get_for_display(Gdk::Display::get_default())
            ->add_search_path(bundle.bundlePath() + "/Contents/Resources/icons");
        if (sandboxForbidden())
            refuse();
        else
            showPages();
    }

    void showPages() {
        installer = std::make_unique<Installer>(*this, bundle, propertyLists, makeDelegate);
        application->add_window(installer->mainWindow());
        addKeyboardShortcuts(*application.get(), installer->mainWindow(),
                             [this](double level) { installer->zoomPage(level); });
        shielded([this] { installer->applicationDelegate().applicationDidFinishLaunching(); });
        installer->mainWindow().present();
        keepPlainRendererToOurselves();
    }

    void refuse() {
        constexpr auto reason =
            "This system does not let the installer show its pages.\n\n"
            "They are kept apart from everything else by bubblewrap, in user namespaces, which are forbidden to "
            "this program. Whoever administers the system can allow them.";
        Log("%s", reason);
        refusal = std::make_unique<GtkWindow>(windowTitle(bundle), applicationId(bundle));
        application->add_window(refusal->gtkWindow());
        refusal->beginAlertSheet(
            {AlertStyle::critical, "Error", "OK", reason, {}, [this](bool) { terminate(); }});
        refusal->gtkWindow().present();
    }

    void onWindowRemoved() {
        const bool last = application->get_windows().empty();
        if (last && (!installer ||
                     installer->applicationDelegate().applicationShouldTerminateAfterLastWindowClosed()))
            terminate();
    }

    ApplicationDelegateMaker makeDelegate;
    PlistReader propertyLists;
    ExecutableBundle bundle;
    Glib::RefPtr<Gtk::Application> application;
    sigc::connection windowRemoved;
    std::unique_ptr<Installer> installer;
    std::unique_ptr<GtkWindow> refusal;  ///< the only window of a program that cannot show pages
};

/// The session bus, which the application uses too as long as it is kept; nothing when there is none. To be
/// called before the toolkit starts.
Glib::RefPtr<Gio::DBus::Connection> sessionBus() {
    constexpr unsigned longestWait = 10;  // seconds
    try {
        return messageBus(Gio::DBus::BusType::SESSION, longestWait);
    } catch (const Glib::Error&) {
        // Nobody else waits for one that does not answer.
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
        // GTK's accessibility crashes at the end of an application without it (seen with GTK 4.8).
        setenv("GTK_A11Y", "none", 0);
        return {};
    }
}

/// The system bus, which the web view asks for real-time threads, without a limit of time. To be called
/// before the toolkit starts.
Glib::RefPtr<Gio::DBus::Connection> systemBus() {
    constexpr unsigned longestWait = 2;  // seconds
    try {
        return messageBus(Gio::DBus::BusType::SYSTEM, longestWait);
    } catch (const Gio::Error& error) {
        if (error.code() == Gio::Error::TIMED_OUT)
            setenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:", 1);
    } catch (const Glib::Error&) {
        // There is none.
    }
    return {};
}

/// GLib tells the web view's network process whether there is a network. By default it asks NetworkManager
/// for that, and waits for ever for a system bus that accepts connections and does not answer.
void askTheKernelForTheNetwork() { setenv("GIO_USE_NETWORK_MONITOR", "netlink", 0); }

}  // namespace

int ApplicationMain(int, char*[], ApplicationDelegateMaker makeDelegate) {
    Gio::init();
    usePlainRenderer();
    askTheKernelForTheNetwork();
    const auto keptSessionBus = sessionBus();
    const auto keptSystemBus = systemBus();
    if (!gtk_init_check()) {
        Log("The installer needs a graphical desktop: no display could be opened.");
        return 1;
    }
    Glib::add_exception_handler([] { shielded([] { throw; }); });
    return GtkApplication(std::move(makeDelegate)).run();
}

}  // namespace vok
