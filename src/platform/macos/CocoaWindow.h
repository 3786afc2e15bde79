#pragma once

#include "platform/Window.h"

#include <deque>
#include <functional>

#import <AppKit/AppKit.h>

@class VOKSheetObserver;

namespace vok {

/// The main window, with the page in it and at most one sheet on it. On the screen from the beginning.
class CocoaWindow final : public Window {
public:
    CocoaWindow(const std::string& title, NSView* page);
    CocoaWindow(const CocoaWindow&) = delete;
    ~CocoaWindow() override;

    void performMiniaturize() override;
    void beginAlertSheet(AlertStyle style, const std::string& title, const std::string& defaultButton,
                         const std::string& message) override;

    /// Shows the next sheet that waits, unless one is open.
    void showNextSheet();

private:
    NSWindow* window;
    VOKSheetObserver* sheetObserver;  ///< the window does not retain it
    std::deque<std::function<void()>> waitingSheets;
};

}  // namespace vok
