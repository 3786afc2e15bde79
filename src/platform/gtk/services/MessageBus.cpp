#include "platform/gtk/services/MessageBus.h"

#include <giomm/cancellable.h>
#include <giomm/error.h>
#include <glibmm/main.h>

#include <cstdlib>

namespace vok {

namespace {

/// A main loop in a separate context, which handles no other events of the program.
class OwnLoop {
public:
    OwnLoop() { context->push_thread_default(); }
    ~OwnLoop() { context->pop_thread_default(); }
    OwnLoop(const OwnLoop&) = delete;
    OwnLoop& operator=(const OwnLoop&) = delete;
    Glib::MainContext& operator*() const { return *context.get(); }

private:
    Glib::RefPtr<Glib::MainContext> context = Glib::MainContext::create();
};

}  // namespace

/// GLib's own blocking call has no time limit, and a bus may accept a connection and never answer.
Glib::RefPtr<Gio::DBus::Connection> messageBus(Gio::DBus::BusType type) {
    const unsigned timeout = type == Gio::DBus::BusType::SESSION ? 10 : 2;  // seconds
    const OwnLoop loop;
    const auto cancellable = Gio::Cancellable::create();
    Glib::RefPtr<Gio::AsyncResult> answer;
    Gio::DBus::Connection::get(
        type, [&](Glib::RefPtr<Gio::AsyncResult>& result) { answer = result; }, cancellable);
    (*loop).signal_timeout().connect_seconds_once([&] { cancellable->cancel(); }, timeout);
    while (!answer)
        (*loop).iteration(true);
    if (cancellable->is_cancelled())
        throw Gio::Error(Gio::Error::TIMED_OUT, "The message bus does not answer.");
    auto connection = Gio::DBus::Connection::get_finish(answer);
    connection->set_exit_on_close(false);
    return connection;
}

MessageBuses::MessageBuses() {
    // GLib reports to the web view's network process whether there is a network. By default it asks
    // NetworkManager, and waits forever for a system bus that does not answer.
    setenv("GIO_USE_NETWORK_MONITOR", "netlink", 0);
    try {
        session = messageBus(Gio::DBus::BusType::SESSION);
    } catch (const Glib::Error&) {
        // Keep others from waiting on a dead bus.
        setenv("DBUS_SESSION_BUS_ADDRESS", "disabled:", 1);
        // Without it, GTK's accessibility crashes when the application ends (seen with GTK 4.8).
        setenv("GTK_A11Y", "none", 0);
    }
    try {
        system = messageBus(Gio::DBus::BusType::SYSTEM);  // WebKitGTK asks it for real-time threads
    } catch (const Glib::Error& error) {
        if (error.matches(G_IO_ERROR, G_IO_ERROR_TIMED_OUT))
            setenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:", 1);
    }
}

}  // namespace vok
