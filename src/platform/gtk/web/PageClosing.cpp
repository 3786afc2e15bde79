#include "platform/gtk/web/PageClosing.h"

#include <glibmm/main.h>

#include <utility>

namespace vok {

namespace {

constexpr unsigned timeout = 3;  // seconds

}  // namespace

PageClosing::PageClosing(WebKitWebView* opened)
    : view(opened), pendingClose(std::make_shared<std::function<void()>>()),
      closed(connect<void()>(opened, "close", [this] { closeIfAsked(); })) {}

PageClosing::~PageClosing() { noAnswer.disconnect(); }

void PageClosing::ask(std::function<void()> close) {
    if (noAnswer.connected())
        return;  // the page still has time to answer
    *pendingClose = std::move(close);
    noAnswer = Glib::signal_timeout().connect_seconds(
        [this] {
            closeIfAsked();
            return false;
        },
        timeout);
    webkit_web_view_try_close(view);
}

/// There is no time limit for the user; the view may be gone when the sheet closes.
Alert PageClosing::onObjection(Alert question) {
    noAnswer.disconnect();
    question.onEnd = [pending = pendingClose, answer = std::move(question.onEnd)](bool leave) {
        if (!leave)
            *pending = nullptr;
        answer(leave);
    };
    return question;
}

void PageClosing::closeIfAsked() {
    noAnswer.disconnect();
    if (const auto close = std::exchange(*pendingClose, nullptr))
        close();
}

}  // namespace vok
