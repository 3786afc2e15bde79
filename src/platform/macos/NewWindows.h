#pragma once

#include <functional>
#include <string>

#define DISABLE_LEGACY_WEBKIT_DEPRECATIONS  // the whole of WebView is deprecated, in favour of another class
#import <WebKit/WebKit.h>

@class VOKNewWindow;

namespace vok {

/// The windows that a page has opened. None is ever shown or loads anything: a script may hold one until the
/// window gets an address, which is reported and refused, and which ends the window.
class NewWindows {
public:
    /// `onAddress` is called with the first address of each window that is not that of an empty page.
    explicit NewWindows(std::function<void(const std::string& url)> onAddress);
    ~NewWindows();
    NewWindows(const NewWindows&) = delete;
    NewWindows& operator=(const NewWindows&) = delete;

    /// A window for a page in `opener`; nil, which refuses the window, while a page holds too many.
    ::WebView* open(::WebView* opener);

    /// Ends all windows: the page that opened them is gone.
    void closeAll();

private:
    std::function<void(const std::string&)> onAddress;
    NSMutableArray* windows;  ///< of VOKNewWindow
};

}  // namespace vok
