#include "platform/macos/CocoaWindow.h"

#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"

/// The window's delegate: shows the next sheet when one has closed.
@interface VOKSheetObserver : NSObject <NSWindowDelegate>
@property(nonatomic, assign) vok::CocoaWindow* owner;
- (void)showNextSheet;
@end

@implementation VOKSheetObserver

/// In a later iteration of the run loop, when the window has finished closing the sheet.
- (void)windowDidEndSheet:(NSNotification*)notification {
    [self performSelector:@selector(showNextSheet) withObject:nil afterDelay:0];
}

- (void)showNextSheet {
    vok::calledFromCocoa([&] { self.owner->showNextSheet(); });
}

@end

namespace vok {

CocoaWindow::CocoaWindow(const std::string& title, NSView* page) {
    constexpr NSWindowStyleMask style = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                        NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable;
    window = [[NSWindow alloc] initWithContentRect:page.frame
                                         styleMask:style
                                           backing:NSBackingStoreBuffered
                                             defer:YES];
    sheetObserver = [[VOKSheetObserver alloc] init];
    sheetObserver.owner = this;
    window.releasedWhenClosed = NO;  // this object owns it
    window.delegate = sheetObserver;
    window.title = toNSString(title);
    window.contentMinSize = NSMakeSize(640, 480);
    window.collectionBehavior =
        NSWindowCollectionBehaviorFullScreenNone;  // a full-screen window cannot be miniaturised
    window.contentView = page;
    window.initialFirstResponder = page;
    [window center];
    [window makeKeyAndOrderFront:nil];
}

CocoaWindow::~CocoaWindow() {
    [NSObject cancelPreviousPerformRequestsWithTarget:sheetObserver];
    window.delegate = nil;
}

void CocoaWindow::performMiniaturize() {
    callCocoa([&] { [window performMiniaturize:nil]; });
}

void CocoaWindow::beginAlertSheet(AlertStyle style, const std::string& title,
                                  const std::string& defaultButton, const std::string& message) {
    sheets.add([=, this] {
        callCocoa([&] {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
            const auto beginSheet =
                style == AlertStyle::critical ? NSBeginCriticalAlertSheet : NSBeginInformationalAlertSheet;
#pragma clang diagnostic pop
            beginSheet(toNSString(title), toNSString(defaultButton), nil, nil, window, nil, nullptr, nullptr,
                       nullptr, @"%@", toNSString(message));
            // Otherwise neither Quit nor a command could end the application while the sheet is open.
            window.attachedSheet.preventsApplicationTerminationWhenModal = NO;
        });
    });
}

}  // namespace vok
