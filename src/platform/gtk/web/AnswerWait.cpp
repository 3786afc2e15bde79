#include "platform/gtk/web/AnswerWait.h"

#include "foundation/Shielded.h"
#include "platform/gtk/web/SignIn.h"

#include <glibmm/main.h>
#include <sigc++/adaptors/bind.h>
#include <sigc++/functors/mem_fun.h>
#include <sigc++/functors/slot.h>

namespace vok {

namespace {

constexpr unsigned longestSilence = 60;  // seconds

}  // namespace

AnswerWait::AnswerWait(std::function<void()> silence, std::function<void()> signInCancelled)
    : onSilence(std::move(silence)), onSignInCancelled(std::move(signInCancelled)) {}

AnswerWait::~AnswerWait() { end(); }

void AnswerWait::start() {
    end();
    timer = Glib::signal_timeout().connect_seconds(
        [this] {
            shielded(onSilence);
            return false;
        },
        longestSilence);
}

void AnswerWait::end() {
    timer.disconnect();
    openRequest.reset();
}

std::optional<Alert> AnswerWait::signIn(WebKitAuthenticationRequest* request) {
    // The sheet may outlive this object: then the slot does nothing.
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
