#include "platform/Application.h"

#include "foundation/Log.h"
#include "platform/Platform.h"
#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"
#include "platform/macos/CocoaWindow.h"
#include "platform/macos/MacMachine.h"
#include "platform/macos/MainMenu.h"
#include "platform/macos/Services.h"
#include "platform/macos/WebKitView.h"
#include "platform/shared/CommandLine.h"
#include "platform/shared/WindowTitle.h"
#include "texts/Texts.h"

#include <climits>
#include <cstdlib>
#include <iostream>
#include <string_view>

#include <mach-o/dyld.h>
#include <unistd.h>

/// A function to be called by the run loop, which retains it until then.
@interface VOKDeferredCall : NSObject
@property(nonatomic) std::function<void()> function;
- (void)perform;
@end

@implementation VOKDeferredCall

- (void)perform {
    vok::calledFromCocoa(self.function);
}

@end

namespace vok {

namespace {

class CocoaApplication final : public Application {
public:
    /// Calls `exit`: no destructor runs.
    void terminate() override {
        callCocoa([] { [NSApp terminate:[NSApp delegate]]; });
    }

    void performAfterDelay(double seconds, std::function<void()> perform) override {
        callCocoa([&] {
            VOKDeferredCall* const call = [[VOKDeferredCall alloc] init];
            call.function = std::move(perform);
            // The default mode alone would delay the call while a page's alert is open.
            [call performSelector:@selector(perform)
                       withObject:nil
                       afterDelay:seconds
                          inModes:@[ NSRunLoopCommonModes ]];
        });
    }
};

/// Window, web view and the delegate that drives them.
struct Installer {
    explicit Installer(const ApplicationDelegateMaker& makeDelegate)
        : webView(workspace,
                  [this](const std::string& message) {
                      window.beginAlertSheet(AlertStyle::informational, windowTitle(bundle),
                                             translated(texts::ok), message);
                  }),
          window(windowTitle(bundle), webView.nsView()),
          delegate(
              makeDelegate({application, window, webView, workspace, bundle, propertyLists, urls, machine})) {
    }

    CocoaApplication application;
    SharedWorkspace workspace;
    MainBundle bundle;
    PlistReader propertyLists;
    NSURLParser urls;
    MacMachine machine;
    WebKitView webView;
    CocoaWindow window;
    std::unique_ptr<ApplicationDelegate> delegate;
};

}  // namespace

}  // namespace vok

/// Forwards the application's life cycle to the port's delegate, which is borrowed.
@interface VOKApplicationDelegate : NSObject <NSApplicationDelegate>
@property(nonatomic, assign) vok::ApplicationDelegate* told;
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application;  // of NSApplicationDelegate
@end

@implementation VOKApplicationDelegate

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    vok::calledFromCocoa([&] { self.told->applicationDidFinishLaunching(); });
}

- (BOOL)applicationShouldTerminateAfterLastWindowClosed:(NSApplication*)sender {
    return vok::calledFromCocoa([&] { return self.told->applicationShouldTerminateAfterLastWindowClosed(); });
}

/// The program opens no files: a file name as an argument is ignored.
- (void)application:(NSApplication*)sender openFiles:(NSArray*)filenames {
    vok::calledFromCocoa([&] { [sender replyToOpenOrPrint:NSApplicationDelegateReplySuccess]; });
}

/// Nothing is restored; without this method macOS 14 logs a warning at each start.
- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
    return YES;
}

@end

/// The principal class: builds menus, window and web view in code.
@interface VOKApplication : NSApplication
@property(nonatomic) vok::ApplicationDelegateMaker delegateMaker;
@end

@implementation VOKApplication {
    std::unique_ptr<vok::Installer> installer;
    VOKApplicationDelegate* callbacks;  // NSApplication does not retain its delegate
}

- (void)finishLaunching {
    vok::calledFromCocoa([&] {
        NSWindow.allowsAutomaticWindowTabbing = NO;
        vok::buildMainMenu(self, vok::toNSString(vok::windowTitle(vok::MainBundle())));
        installer = std::make_unique<vok::Installer>(self.delegateMaker);
        callbacks = [[VOKApplicationDelegate alloc] init];
        callbacks.told = installer->delegate.get();
        self.delegate = callbacks;
    });
    if (!callbacks)
        exit(EXIT_FAILURE);  // without a window the user could not end it
    [super finishLaunching];
}

@end

namespace vok {

namespace {

/// If the program was started through a symbolic link, executes its real path: NSBundle would look for the
/// bundle around the link and find neither Info.plist nor Tools. Returns when there is no link, or on
/// failure.
void executeRealPath(char* argv[]) {
    char path[PATH_MAX];
    char realPath[PATH_MAX];
    uint32_t size = sizeof path;
    if (_NSGetExecutablePath(path, &size) == 0 && realpath(path, realPath) &&
        std::string_view(path) != realPath)
        execv(realPath, argv);
}

}  // namespace

int ApplicationMain(int argc, char* argv[], ApplicationDelegateMaker makeDelegate) {
    executeRealPath(argv);
    const auto answer = calledFromCocoa([&] { return commandLineAnswer(argc, argv, MainBundle()); });
    if (answer) {
        std::cout << *answer;
        return EXIT_SUCCESS;
    }
    @autoreleasepool {
        auto* const application = static_cast<VOKApplication*>([VOKApplication sharedApplication]);
        application.delegateMaker = std::move(makeDelegate);
    }
    return NSApplicationMain(argc, const_cast<const char**>(argv));
}

}  // namespace vok
