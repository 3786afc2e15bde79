#pragma once

#include <sigc++/connection.h>
#include <webkit/webkit.h>

#include <functional>
#include <list>
#include <string>

namespace vok {

class NewWindow;

/// The windows that a page has opened. None is ever shown or loads anything: a script may hold one until the
/// window gets an address, which is reported and refused, and which ends the window.
class NewWindows {
public:
    /// `onAddress` is called with the first address of each window that is not that of an empty page.
    explicit NewWindows(std::function<void(const std::string& url)> onAddress);
    ~NewWindows();
    NewWindows(const NewWindows&) = delete;
    NewWindows& operator=(const NewWindows&) = delete;

    /// A window for a page in `opener`; null, which refuses the window, while a page holds too many.
    /// Borrowed, for WebKitGTK's "create" signal.
    GtkWidget* open(WebKitWebView* opener);

    /// Ends all windows: the page that opened them is gone.
    void closeAll();

private:
    void report(const std::string& url);

    std::function<void(const std::string&)> onAddress;
    std::list<NewWindow> windows;
    sigc::connection cleanUp;
};

}  // namespace vok
