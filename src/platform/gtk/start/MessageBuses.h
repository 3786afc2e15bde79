#pragma once

#include <giomm/dbusconnection.h>

namespace vok {

/// Connects to the session bus and the system bus before GTK and WebKitGTK do, which wait without a limit for
/// a bus that accepts connections and does not answer. Such a bus is disabled in the environment, also for
/// the programs that this one starts. The connections are shared with GTK as long as they are kept. To be
/// made before GTK starts.
class MessageBuses {
public:
    MessageBuses();

private:
    Glib::RefPtr<Gio::DBus::Connection> session;
    Glib::RefPtr<Gio::DBus::Connection> system;
};

}  // namespace vok
