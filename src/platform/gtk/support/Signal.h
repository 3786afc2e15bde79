#pragma once

#include "foundation/Shielded.h"

#include <glib-object.h>

#include <functional>
#include <memory>

namespace vok {

/// An owned reference to a GObject.
struct GObjectUnref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <class Type>
using GObjectPtr = std::unique_ptr<Type, GObjectUnref>;

/// Connects a handler to a signal of a GObject, and disconnects it when destroyed.
class SignalConnection {
public:
    SignalConnection(gpointer object, const char* signal, GCallback thunk, std::shared_ptr<void> thunkHandler)
        : instance(G_OBJECT(g_object_ref(object))), handler(std::move(thunkHandler)),
          id(g_signal_connect(instance.get(), signal, thunk, handler.get())) {}
    SignalConnection(SignalConnection&&) = default;
    SignalConnection& operator=(SignalConnection&&) = delete;
    ~SignalConnection() {
        if (instance)
            g_signal_handler_disconnect(instance.get(), id);
    }

private:
    GObjectPtr<GObject> instance;
    std::shared_ptr<void> handler;
    gulong id;
};

template <class Signature>
struct SignalThunk;

template <class Result, class... Arguments>
struct SignalThunk<Result(Arguments...)> {
    using Handler = std::function<Result(Arguments...)>;

    static Result call(gpointer, Arguments... arguments, gpointer handler) noexcept {
        return shielded([&] { return (*static_cast<Handler*>(handler))(arguments...); });
    }
};

/// Connects `handler` to `signal`. Signature is that of the signal without the instance and the user data,
/// for example `void(WebKitLoadEvent)`. An exception of `handler` is logged.
template <class Signature>
SignalConnection connect(gpointer instance, const char* signal,
                         typename SignalThunk<Signature>::Handler handler) {
    auto owned = std::make_shared<typename SignalThunk<Signature>::Handler>(std::move(handler));
    return {instance, signal, G_CALLBACK(SignalThunk<Signature>::call), std::move(owned)};
}

}  // namespace vok
