#include "platform/gtk/web/AnswerTimeout.h"

#include "foundation/Shielded.h"

#include <glibmm/main.h>

namespace vok {

namespace {

constexpr unsigned longestSilence = 60;  // seconds

}  // namespace

AnswerTimeout::AnswerTimeout(std::function<void()> handler) : onSilence(std::move(handler)) {}

AnswerTimeout::~AnswerTimeout() { stop(); }

void AnswerTimeout::start() {
    stop();
    timer = Glib::signal_timeout().connect_seconds(
        [this] {
            shielded(onSilence);
            return false;
        },
        longestSilence);
}

void AnswerTimeout::stop() { timer.disconnect(); }

}  // namespace vok
