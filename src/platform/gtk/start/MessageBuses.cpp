#include "platform/gtk/start/MessageBuses.h"

#include "platform/gtk/services/MessageBus.h"

#include <giomm/error.h>

#include <cstdlib>

namespace vok {

namespace {

Glib::RefPtr<Gio::DBus::Connection> sessionBus() {
    constexpr unsigned timeout = 10;  // seconds
    try {
        return messageBus(Gio::DBus::BusType::SESSION, timeout);
    } catch (const Glib::Error&) {
        // Keep others from waiting on a dead bus.
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
        // Without it, GTK's accessibility crashes when the application ends (seen with GTK 4.8).
        setenv("GTK_A11Y", "none", 0);
        return {};
    }
}

/// WebKitGTK asks the system bus for real-time threads.
Glib::RefPtr<Gio::DBus::Connection> systemBus() {
    constexpr unsigned timeout = 2;  // seconds
    try {
        return messageBus(Gio::DBus::BusType::SYSTEM, timeout);
    } catch (const Gio::Error& error) {
        if (error.code() == Gio::Error::TIMED_OUT)
            setenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:", 1);
    } catch (const Glib::Error&) {
        // There is no such bus.
    }
    return {};
}

/// GLib reports to the web view's network process whether there is a network. By default it asks
/// NetworkManager, and waits forever for a system bus that does not answer; with "netlink" it asks the
/// kernel.
void useKernelNetworkMonitor() { setenv("GIO_USE_NETWORK_MONITOR", "netlink", 0); }

}  // namespace

MessageBuses::MessageBuses() {
    useKernelNetworkMonitor();
    session = sessionBus();
    system = systemBus();
}

}  // namespace vok
