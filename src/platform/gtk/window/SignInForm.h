#pragma once

#include "platform/gtk/window/Alert.h"

#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/passwordentry.h>

namespace vok {

/// The fields of a sheet that asks for a user name and a password. Return in them is the sheet's default
/// button.
class SignInForm final : public Gtk::Grid {
public:
    SignInForm();

    Gtk::Widget& firstField() { return userName; }
    SignInFields content() const;

private:
    void addRow(int row, const std::string& label, Gtk::Widget& field);

    Gtk::Entry userName;
    Gtk::PasswordEntry password;
};

}  // namespace vok
