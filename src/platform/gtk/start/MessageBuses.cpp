#include "platform/gtk/start/MessageBuses.h"

#include "platform/gtk/services/MessageBus.h"

#include <giomm/error.h>

#include <cstdlib>

namespace vok {

namespace {

Glib::RefPtr<Gio::DBus::Connection> sessionBus() {
    constexpr unsigned longestWait = 10;  // seconds
    try {
        return messageBus(Gio::DBus::BusType::SESSION, longestWait);
    } catch (const Glib::Error&) {
        // Keep others from waiting on a dead bus.
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
        // GTK's accessibility crashes at the end of an application without it (seen with GTK 4.8).
        setenv("GTK_A11Y", "none", 0);
        return {};
    }
}

/// WebKitGTK asks the system bus for real-time threads.
Glib::RefPtr<Gio::DBus::Connection> systemBus() {
    constexpr unsigned longestWait = 2;  // seconds
    try {
        return messageBus(Gio::DBus::BusType::SYSTEM, longestWait);
    } catch (const Gio::Error& error) {
        if (error.code() == Gio::Error::TIMED_OUT)
            setenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:", 1);
    } catch (const Glib::Error&) {
        // There is no such bus.
    }
    return {};
}

/// GLib tells the web view's network process whether there is a network. By default it asks NetworkManager,
/// and waits forever for a system bus that does not answer; with "netlink" it asks the kernel.
void useKernelNetworkMonitor() { setenv("GIO_USE_NETWORK_MONITOR", "netlink", 0); }

}  // namespace

MessageBuses::MessageBuses() {
    useKernelNetworkMonitor();
    session = sessionBus();
    system = systemBus();
}

}  // namespace vok
