#pragma once

#import <AppKit/AppKit.h>

namespace vok {

/// Builds the menus of the application, whose name is `name`.
void buildMainMenu(NSApplication* application, NSString* name);

}  // namespace vok
