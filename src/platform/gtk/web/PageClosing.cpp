#include "platform/gtk/web/PageClosing.h"

#include <glibmm/main.h>

#include <utility>

namespace vok {

namespace {

constexpr unsigned longestWait = 3;  // seconds

}  // namespace

PageClosing::PageClosing(WebKitWebView* opened)
    : view(opened), pendingClose(std::make_shared<std::function<void()>>()),
      closed(connect<void()>(opened, "close", [this] { closeIfAsked(); })) {}

PageClosing::~PageClosing() { noAnswer.disconnect(); }

void PageClosing::ask(std::function<void()> close) {
    if (noAnswer.connected())
        return;  // the page has still time to answer
    *pendingClose = std::move(close);
    noAnswer = Glib::signal_timeout().connect_seconds(
        [this] {
            closeIfAsked();
            return false;
        },
        longestWait);
    webkit_web_view_try_close(view);
}

/// The user may take longer than a page, and the view may be gone when the sheet ends.
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
