#pragma once

#include <string>

namespace vok {

enum class AlertStyle {
    informational,
    critical,
};

/// The main window. Every call is on the main thread.
class Window {
public:
    virtual ~Window() = default;

    /// Miniaturises the window, as its own button does.
    virtual void performMiniaturize() = 0;

    /// Shows a sheet on the window and returns at once; while another sheet is open, it is queued.
    /// `message` is plain text of any length, shown literally; `defaultButton` dismisses the sheet.
    virtual void beginAlertSheet(AlertStyle style, const std::string& title, const std::string& defaultButton,
                                 const std::string& message) = 0;
};

}  // namespace vok
