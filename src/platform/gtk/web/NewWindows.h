#pragma once

#include <sigc++/trackable.h>
#include <webkit/webkit.h>

#include <functional>
#include <list>
#include <string>

namespace vok {

class NewWindow;

/// The windows that a page has opened. They are never shown and load nothing: when a script sets the URL of
/// one, it is reported and refused, and the window is closed.
class NewWindows : public sigc::trackable {
public:
    /// `onAddress` is called with the first URL of each window other than about:blank.
    explicit NewWindows(std::function<void(const std::string& url)> onAddress);
    ~NewWindows();

    /// A window for a page in `opener`; null, which refuses the window, while there are too many.
    /// Borrowed, for WebKitGTK's "create" signal.
    GtkWidget* open(WebKitWebView* opener);

    /// Closes all windows, when the page that opened them is gone.
    void closeAll();

private:
    void report(const std::string& url);
    void removeEnded();

    std::function<void(const std::string&)> onAddress;
    std::list<NewWindow> windows;
};

}  // namespace vok
