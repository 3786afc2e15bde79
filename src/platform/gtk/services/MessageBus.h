#pragma once

#include <giomm/dbusconnection.h>

namespace vok {

/// The session bus or the system bus. Its end does not end the program. Throws Glib::Error when there is none
/// that answers within its limit: 10 seconds for the session bus, 2 for the system bus.
Glib::RefPtr<Gio::DBus::Connection> messageBus(Gio::DBus::BusType type);

/// Connects to both buses before GTK and WebKitGTK do, which wait without a limit for a bus that accepts
/// connections and does not answer. Such a bus is disabled in the environment, also for child processes. GTK
/// shares the connections while this object exists. To be created before GTK starts.
class MessageBuses {
public:
    MessageBuses();

private:
    Glib::RefPtr<Gio::DBus::Connection> session;
    Glib::RefPtr<Gio::DBus::Connection> system;
};

}  // namespace vok
