#pragma once

#import <AppKit/AppKit.h>

namespace vok {

/// Gives the application its menus: its own with Quit, Edit, and Window. `name` is that of the application.
void buildMainMenu(NSApplication* application, NSString* name);

}  // namespace vok
