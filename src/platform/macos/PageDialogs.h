#pragma once

#define DISABLE_LEGACY_WEBKIT_DEPRECATIONS  // all of WebView is deprecated
#import <WebKit/WebKit.h>

namespace vok {

/// Shows a page's alert() or confirm() in a panel. Returns whether the user chose OK.
bool runPanel(::WebView* view, NSString* message, bool isQuestion);

/// The items of the context menu: editing, the address of a link, and Reload. Going back could run a command
/// again.
NSArray* contextMenuItems(::WebView* view, NSArray* defaultItems);

}  // namespace vok
