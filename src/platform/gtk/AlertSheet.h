#pragma once

#include "platform/Window.h"

#include <gtkmm/button.h>
#include <gtkmm/window.h>

namespace vok {

/// What one sheet says.
struct Alert {
    AlertStyle style;
    std::string title;
    std::string defaultButton;
    std::string message;
};

/// A modal dialog on the main window. The message is plain text, wrapped, and scrolls when it is long; the
/// default button, Return and Escape dismiss it.
class AlertSheet final : public Gtk::Window {
public:
    AlertSheet(Gtk::Window& parent, const Alert& alert);

private:
    Gtk::Button button;
};

}  // namespace vok
