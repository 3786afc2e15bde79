#pragma once

#include "platform/gtk/window/Alert.h"

#include <gtkmm/box.h>
#include <gtkmm/button.h>
#include <gtkmm/window.h>

namespace vok {

/// A modal dialog on the main window. The message is plain text, wrapped, and scrolls when it is long; the
/// buttons, Return (the default one) and Escape dismiss it.
/// Gtk::AlertDialog needs GTK 4.10 (Debian 12 has 4.8), and neither it nor Gtk::MessageDialog scrolls.
class AlertSheet final : public Gtk::Window {
public:
    AlertSheet(Gtk::Window& parent, Alert shown);

    /// Reports how the sheet ended, after it has closed.
    void reportEnd() const;

private:
    Gtk::Box& buttons();
    void announceFocus();

    Alert alert;
    Gtk::Button agreeButton;
    Gtk::Button cancelButton;
    bool agreed = false;
};

}  // namespace vok
