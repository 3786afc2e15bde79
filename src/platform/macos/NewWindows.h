#pragma once

#include <functional>
#include <string>

#define DISABLE_LEGACY_WEBKIT_DEPRECATIONS  // all of WebView is deprecated
#import <WebKit/WebKit.h>

@class VOKNewWindow;

namespace vok {

/// The windows that a page has opened. They are never shown and load nothing: when a script sets the URL of
/// one, it is reported and refused, and the window is closed.
class NewWindows {
public:
    /// `onAddress` is called with the first URL of each window other than about:blank.
    explicit NewWindows(std::function<void(const std::string& url)> onAddress);
    ~NewWindows();
    NewWindows(const NewWindows&) = delete;
    NewWindows& operator=(const NewWindows&) = delete;

    /// A window for a page in `opener`; nil, which refuses the window, while there are too many.
    ::WebView* open(::WebView* opener);

    /// Closes all windows, when the page that opened them is gone.
    void closeAll();

private:
    std::function<void(const std::string&)> onAddress;
    NSMutableArray* windows;  ///< of VOKNewWindow
};

}  // namespace vok
