#pragma once

#define DISABLE_LEGACY_WEBKIT_DEPRECATIONS  // the whole of WebView is deprecated, in favour of another class
#import <WebKit/WebKit.h>

namespace vok {

/// Shows the alert or question of a page's script. Returns whether the user answered OK.
bool runPanel(::WebView* view, NSString* message, bool isQuestion);

/// Lets the user choose files in a sheet, for a page's form.
void chooseFiles(::WebView* view, id<WebOpenPanelResultListener> listener, bool severalFiles);

/// What a menu on the page offers of the engine's items: editing, the address of a link, Reload, and the
/// inspector if it is switched on. Going back could run a command again.
NSArray* contextMenuItems(::WebView* view, NSArray* defaultItems);

}  // namespace vok
