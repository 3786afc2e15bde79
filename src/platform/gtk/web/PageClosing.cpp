#include "platform/gtk/web/PageClosing.h"

#include <glibmm/main.h>
#include <sigc++/adaptors/bind_return.h>
#include <sigc++/functors/mem_fun.h>

#include <utility>

namespace vok {

constexpr unsigned timeout = 3;  // seconds

PageClosing::PageClosing(WebKitWebView* opened)
    : view(opened), pendingClose(std::make_shared<std::function<void()>>()),
      closed(connect<void()>(opened, "close", [this] { closeIfAsked(); })) {}

void PageClosing::ask(std::function<void()> close) {
    if (noAnswer.connected())
        return;  // the page still has time to answer
    *pendingClose = std::move(close);
    const auto giveUp = sigc::mem_fun(*this, &PageClosing::closeIfAsked);
    noAnswer = Glib::signal_timeout().connect_seconds(sigc::bind_return(giveUp, false), timeout);
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
