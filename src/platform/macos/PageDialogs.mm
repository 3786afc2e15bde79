#include "platform/macos/PageDialogs.h"

#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"
#include "texts/Texts.h"

namespace vok {

namespace {

constexpr NSInteger tagInspectElement = 2024;  // of WebMenuItemTag; not in a public header

bool belongsInContextMenu(NSMenuItem* item) {
    switch (item.tag) {
    case WebMenuItemTagCopyLinkToClipboard:
    case WebMenuItemTagCut:
    case WebMenuItemTagCopy:
    case WebMenuItemTagPaste:
    case tagInspectElement:
        return true;
    default:
        return false;
    }
}

/// Replaces the engine's own item, which would reload a command URL.
NSMenuItem* reloadItem(::WebView* view, NSString* title) {
    NSMenuItem* const item = [[NSMenuItem alloc] initWithTitle:title
                                                        action:@selector(reload:)
                                                 keyEquivalent:@""];
    item.target = view;
    return item;
}

}  // namespace

bool runPanel(::WebView* view, NSString* message, bool isQuestion) {
    NSAlert* const alert = [[NSAlert alloc] init];
    alert.messageText = view.window.title;
    alert.informativeText = message;
    [alert addButtonWithTitle:toNSString(translated(texts::ok))];
    if (isQuestion)
        [alert addButtonWithTitle:toNSString(translated(texts::cancel))];
    // Otherwise a page could keep Quit, a command or a log-out from ending the application.
    NSWindow* const panel = alert.window;
    panel.preventsApplicationTerminationWhenModal = NO;
    return [alert runModal] == NSAlertFirstButtonReturn;
}

void chooseFiles(::WebView* view, id<WebOpenPanelResultListener> listener, bool severalFiles) {
    NSOpenPanel* const panel = [NSOpenPanel openPanel];
    panel.allowsMultipleSelection = severalFiles;
    static_cast<NSWindow*>(panel).preventsApplicationTerminationWhenModal = NO;
    [panel beginSheetModalForWindow:view.window
                  completionHandler:^(NSModalResponse response) {
                    calledFromCocoa([&] {
                        if (response == NSModalResponseOK)
                            [listener chooseFilenames:[panel.URLs valueForKey:@"path"]];
                        else
                            [listener cancel];
                    });
                  }];
}

NSArray* contextMenuItems(::WebView* view, NSArray* defaultItems) {
    NSMutableArray* const items = [NSMutableArray array];
    for (NSMenuItem* item in defaultItems) {
        if (belongsInContextMenu(item))
            [items addObject:item];
        else if (item.tag == WebMenuItemTagReload)
            [items addObject:reloadItem(view, item.title)];
    }
    return items;
}

}  // namespace vok
