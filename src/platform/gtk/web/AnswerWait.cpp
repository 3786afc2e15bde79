#include "platform/gtk/web/AnswerWait.h"

#include <glibmm/main.h>

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

}  // namespace vok
