#pragma once

#include <giomm/dbusconnection.h>

namespace vok {

/// The session bus or the system bus. Its end does not end the program. Throws Glib::Error when there is none
/// that answers within `seconds`.
Glib::RefPtr<Gio::DBus::Connection> messageBus(Gio::DBus::BusType type, unsigned seconds);

}  // namespace vok
