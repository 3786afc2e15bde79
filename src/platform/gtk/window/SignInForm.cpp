#include "platform/gtk/window/SignInForm.h"

#include "texts/Texts.h"

#include <gtkmm/label.h>

namespace vok {

SignInForm::SignInForm() {
    set_row_spacing(6);
    set_column_spacing(12);
    userName.set_activates_default();
    password.property_activates_default() = true;
    password.set_show_peek_icon();
    addRow(0, translated(texts::userName), userName);
    addRow(1, translated(texts::password), password);
}

SignInFields SignInForm::content() const { return {userName.get_text(), password.get_text()}; }

void SignInForm::addRow(int row, const std::string& label, Gtk::Widget& field) {
    auto& title = *Gtk::make_managed<Gtk::Label>(label);
    title.set_xalign(0);
    field.set_hexpand();
    gtk_accessible_update_property(GTK_ACCESSIBLE(field.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, label.c_str(),
                                   -1);
    attach(title, 0, row);
    attach(field, 1, row);
}

}  // namespace vok
