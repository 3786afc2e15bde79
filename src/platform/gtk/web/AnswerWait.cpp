#include "platform/gtk/web/AnswerWait.h"

#include "platform/gtk/web/SignIn.h"

#include <glibmm/main.h>
#include <sigc++/adaptors/bind.h>
#include <sigc++/functors/mem_fun.h>

namespace vok {

constexpr unsigned timeout = 60;  // seconds

AnswerWait::AnswerWait(std::function<void()> timedOut, std::function<void()> signInCancelled)
    : onTimeout(std::move(timedOut)), onSignInCancelled(std::move(signInCancelled)) {}

AnswerWait::~AnswerWait() { end(); }

void AnswerWait::start() {
    end();
    timer = Glib::signal_timeout().connect_seconds(
        [this] {
            onTimeout();
            return false;
        },
        timeout);
}

void AnswerWait::end() {
    timer.disconnect();
    openRequest.reset();
}

std::optional<Alert> AnswerWait::signIn(WebKitAuthenticationRequest* request) {
    // If the sheet outlives this object, the slot does nothing.
    const sigc::slot<void(bool)> onEnd = sigc::bind(sigc::mem_fun(*this, &AnswerWait::onSignInEnd), request);
    auto sheet = signInAlert(request, onEnd);
    if (sheet && timer.connected()) {
        timer.disconnect();
        openRequest.reset(WEBKIT_AUTHENTICATION_REQUEST(g_object_ref(request)));
    }
    return sheet;
}

void AnswerWait::onSignInEnd(bool agreed, WebKitAuthenticationRequest* request) {
    if (openRequest.get() != request)
        return;
    if (agreed) {
        start();
    } else {
        end();
        onSignInCancelled();
    }
}

}  // namespace vok
