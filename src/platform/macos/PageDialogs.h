#pragma once

#define DISABLE_LEGACY_WEBKIT_DEPRECATIONS  // all of WebView is deprecated
#import <WebKit/WebKit.h>

namespace vok {

/// Shows a page's alert() or confirm() in a panel. Returns whether the user chose OK.
bool runPanel(::WebView* view, NSString* message, bool isQuestion);

/// Shows a page's file chooser in a sheet.
void chooseFiles(::WebView* view, id<WebOpenPanelResultListener> listener, bool severalFiles);

/// The items of the context menu: editing, the address of a link, Reload, and the inspector if it is enabled.
/// Going back could run a command again.
NSArray* contextMenuItems(::WebView* view, NSArray* defaultItems);

}  // namespace vok
