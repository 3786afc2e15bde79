#pragma once

#include "platform/Window.h"
#include "platform/shared/SheetQueue.h"

#import <AppKit/AppKit.h>

@class VOKSheetObserver;

namespace vok {

/// The main window, with the page and at most one sheet. Visible from the beginning.
class CocoaWindow final : public Window {
public:
    CocoaWindow(const std::string& title, NSView* page);
    CocoaWindow(const CocoaWindow&) = delete;
    ~CocoaWindow() override;

    void performMiniaturize() override;
    void beginAlertSheet(AlertStyle style, const std::string& title, const std::string& defaultButton,
                         const std::string& message) override;

    void showNextSheet() { sheets.showNext(); }

private:
    NSWindow* window;
    VOKSheetObserver* sheetObserver;  ///< the window does not retain it
    SheetQueue sheets{[this] { return !window.attachedSheet; }};
};

}  // namespace vok
