#include "platform/macos/MainMenu.h"

#include <initializer_list>

namespace vok {

namespace {

struct Item {
    NSString* title = nil;  ///< nil: a separator
    SEL action = nullptr;   ///< sent to the first responder that implements it
    NSString* key = @"";
    NSEventModifierFlags modifiers = NSEventModifierFlagCommand;
};

constexpr NSEventModifierFlags optionCommand = NSEventModifierFlagOption | NSEventModifierFlagCommand;

NSMenu* addMenu(NSMenu* bar, NSString* title, std::initializer_list<Item> items) {
    NSMenu* const menu = [[NSMenu alloc] initWithTitle:title];
    for (const auto& item : items) {
        if (!item.title) {
            [menu addItem:[NSMenuItem separatorItem]];
            continue;
        }
        NSMenuItem* const entry = [[NSMenuItem alloc] initWithTitle:item.title
                                                             action:item.action
                                                      keyEquivalent:item.key];
        entry.keyEquivalentModifierMask = item.modifiers;
        [menu addItem:entry];
    }
    NSMenuItem* const place = [[NSMenuItem alloc] initWithTitle:title action:nullptr keyEquivalent:@""];
    place.submenu = menu;
    [bar addItem:place];
    return menu;
}

NSString* named(NSString* verb, NSString* name) { return [NSString stringWithFormat:@"%@ %@", verb, name]; }

}  // namespace

void buildMainMenu(NSApplication* application, NSString* name) {
    NSMenu* const bar = [[NSMenu alloc] initWithTitle:@""];
    addMenu(bar, name,
            {{named(@"About", name), @selector(orderFrontStandardAboutPanel:)},
             {},
             {named(@"Hide", name), @selector(hide:), @"h"},
             {@"Hide Others", @selector(hideOtherApplications:), @"h", optionCommand},
             {@"Show All", @selector(unhideAllApplications:)},
             {},
             {named(@"Quit", name), @selector(terminate:), @"q"}});
    addMenu(bar, @"Edit",
            {{@"Undo", NSSelectorFromString(@"undo:"), @"z"},
             {@"Redo", NSSelectorFromString(@"redo:"), @"Z"},
             {},
             {@"Cut", @selector(cut:), @"x"},
             {@"Copy", @selector(copy:), @"c"},
             {@"Paste", @selector(paste:), @"v"},
             {@"Delete", @selector(delete:)},
             {@"Select All", @selector(selectAll:), @"a"}});
    const SEL zoomIn = NSSelectorFromString(@"makeTextLarger:");
    NSMenu* const view = addMenu(bar, @"View",
                                 {{@"Actual Size", NSSelectorFromString(@"makeTextStandardSize:"), @"0"},
                                  {@"Zoom In", zoomIn, @"+"},
                                  {@"Zoom Out", NSSelectorFromString(@"makeTextSmaller:"), @"-"},
                                  {},
                                  {@"Reload Page", NSSelectorFromString(@"reload:"), @"r"}});
    // On most keyboards "+" needs Shift; browsers also zoom in without it.
    NSMenuItem* const plainKey = [[NSMenuItem alloc] initWithTitle:@"Zoom In"
                                                            action:zoomIn
                                                     keyEquivalent:@"="];
    plainKey.hidden = YES;
    plainKey.allowsKeyEquivalentWhenHidden = YES;
    [view addItem:plainKey];
    application.windowsMenu = addMenu(bar, @"Window",
                                      {{@"Minimise", @selector(performMiniaturize:), @"m"},
                                       {@"Zoom", @selector(performZoom:)},
                                       {@"Close", @selector(performClose:), @"w"}});
    application.mainMenu = bar;
}

}  // namespace vok
