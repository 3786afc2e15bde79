#pragma once

#include "platform/gtk/support/Signal.h"
#include "platform/gtk/window/Alert.h"

#include <sigc++/connection.h>
#include <sigc++/trackable.h>
#include <webkit/webkit.h>

#include <functional>
#include <memory>

namespace vok {

/// Asks a page whether its window may close. A page objects with a beforeunload handler, which WebKitGTK
/// calls only after the user has interacted with the page.
class PageClosing : public sigc::trackable {
public:
    /// `view` is borrowed and outlives this object.
    explicit PageClosing(WebKitWebView* view);

    /// Calls `close` when the page does not object, when the user overrules it, and when the page does not
    /// answer within a few seconds.
    void ask(std::function<void()> close);

    bool isAsking() const { return static_cast<bool>(*pendingClose); }

    /// The page objects: `question` is the sheet whose `agreeButton` closes the window anyway.
    Alert onObjection(Alert question);

    /// The page is gone and can no longer object.
    void closeIfAsked();

private:
    WebKitWebView* view;
    std::shared_ptr<std::function<void()>> pendingClose;  ///< empty unless a page has been asked
    sigc::connection noAnswer;
    SignalConnection closed;
};

}  // namespace vok
