#include "platform/gtk/services/MessageBus.h"

#include <giomm/cancellable.h>
#include <giomm/error.h>
#include <glibmm/main.h>

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
Glib::RefPtr<Gio::DBus::Connection> messageBus(Gio::DBus::BusType type, unsigned seconds) {
    const OwnLoop loop;
    const auto cancellable = Gio::Cancellable::create();
    Glib::RefPtr<Gio::AsyncResult> answer;
    Gio::DBus::Connection::get(
        type, [&](Glib::RefPtr<Gio::AsyncResult>& result) { answer = result; }, cancellable);
    (*loop).signal_timeout().connect_seconds_once([&] { cancellable->cancel(); }, seconds);
    while (!answer)
        (*loop).iteration(true);
    if (cancellable->is_cancelled())
        throw Gio::Error(Gio::Error::TIMED_OUT, "The message bus does not answer.");
    auto connection = Gio::DBus::Connection::get_finish(answer);
    connection->set_exit_on_close(false);
    return connection;
}

}  // namespace vok
