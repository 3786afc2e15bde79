#pragma once

#include "platform/Window.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/window.h>

#include <functional>

namespace vok {

/// What one sheet says.
struct Alert {
    AlertStyle style;
    std::string title;
    std::string defaultButton;
    std::string message;
    std::string cancelButton = {};                ///< none when empty
    std::function<void(bool agreed)> onEnd = {};  ///< agreed: by the default button
};

/// A modal dialog on the main window. The message is plain text, wrapped, and scrolls when it is long; the
/// buttons, Return (the default one) and Escape dismiss it.
class AlertSheet final : public Gtk::Window {
public:
    AlertSheet(Gtk::Window& parent, Alert shown);

    /// Tells whoever asked for the sheet how it ended, once it is gone.
    void reportEnd() const;

private:
    Gtk::Box& buttons();

    Alert alert;
    Gtk::Button defaultButton;
    bool agreed = false;
};

}  // namespace vok
