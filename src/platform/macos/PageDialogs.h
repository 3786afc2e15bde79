#pragma once

#define DISABLE_LEGACY_WEBKIT_DEPRECATIONS  // the whole of WebView is deprecated, in favour of another class
#import <WebKit/WebKit.h>

namespace vok {

/// Shows the alert or question of a page's script. Returns whether the user answered OK.
bool runPanel(::WebView* view, NSString* message, bool isQuestion);

/// What a menu on the page offers of the engine's items: editing, the address of a link, and Reload. Going
/// back could run a command again.
NSArray* contextMenuItems(::WebView* view, NSArray* defaultItems);

}  // namespace vok
