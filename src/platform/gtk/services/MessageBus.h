#pragma once

#include <giomm/dbusconnection.h>

namespace vok {

/// The session bus or the system bus; the program continues when it ends. Throws Glib::Error when there is
/// none, or none that answers within `seconds`.
Glib::RefPtr<Gio::DBus::Connection> messageBus(Gio::DBus::BusType type, unsigned seconds);

}  // namespace vok
