#pragma once

#include <giomm/dbusconnection.h>

namespace vok {

/// The system bus. Throws Glib::Error when there is none, or none that answers within a few seconds.
Glib::RefPtr<Gio::DBus::Connection> systemBus();

}  // namespace vok
