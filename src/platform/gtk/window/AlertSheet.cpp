#include "platform/gtk/window/AlertSheet.h"

#include "platform/gtk/support/ZeroBytes.h"
#include "texts/Texts.h"

#include <glibmm/main.h>
#include <gtkmm/entry.h>
#include <gtkmm/grid.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>
#include <gtkmm/passwordentry.h>
#include <gtkmm/scrolledwindow.h>
#include <gtkmm/shortcutcontroller.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace vok {

namespace {

constexpr int messageWidth = 440;
constexpr int maxMessageHeight = 320;
constexpr int buttonWidth = 90;

Gtk::Image& styleImage(AlertStyle style) {
    auto& image = *Gtk::make_managed<Gtk::Image>();
    image.set_from_icon_name(style == AlertStyle::critical ? "dialog-error" : "dialog-information");
    image.set_icon_size(Gtk::IconSize::LARGE);
    image.set_valign(Gtk::Align::START);
    image.property_accessible_role() = Gtk::Accessible::Role::PRESENTATION;
    return image;
}

Gtk::Label& label(const std::string& text) {
    auto& label = *Gtk::make_managed<Gtk::Label>(withoutZeroBytes(text));
    label.set_wrap();
    label.set_wrap_mode(Pango::WrapMode::WORD_CHAR);
    label.set_xalign(0);
    return label;
}

/// Height of `label` once it is wrapped, in pixels. A scrolled area requests only that of its longest line.
int wrappedHeight(const Gtk::Label& label) {
    int minimum = 0;
    int natural = 0;
    int ignored = 0;
    label.measure(Gtk::Orientation::VERTICAL, messageWidth, minimum, natural, ignored, ignored);
    return natural;
}

Gtk::ScrolledWindow& messageArea(const std::string& message) {
    auto& text = label(message);
    text.set_selectable();
    text.set_valign(Gtk::Align::START);
    text.set_margin_end(6);
    Pango::AttrList attributes;
    auto noHyphens = Pango::Attribute::create_attr_insert_hyphens(false);
    attributes.insert(noHyphens);
    text.set_attributes(attributes);
    auto& area = *Gtk::make_managed<Gtk::ScrolledWindow>();
    area.set_overlay_scrolling(false);
    area.set_policy(Gtk::PolicyType::NEVER, Gtk::PolicyType::AUTOMATIC);
    area.set_size_request(messageWidth, -1);
    area.set_min_content_height(std::min(wrappedHeight(text), maxMessageHeight));
    area.set_child(text);
    return area;
}

/// Asks for a user name and a password. Return in a field activates the default button.
class SignInForm final : public Gtk::Grid {
public:
    SignInForm() {
        set_row_spacing(6);
        set_column_spacing(12);
        userName.set_activates_default();
        password.property_activates_default() = true;
        password.set_show_peek_icon();
        addRow(0, translated(texts::userName), userName);
        addRow(1, translated(texts::password), password);
    }

    Gtk::Entry userName;
    Gtk::PasswordEntry password;

private:
    void addRow(int row, const std::string& name, Gtk::Widget& field) {
        auto& title = *Gtk::make_managed<Gtk::Label>(name);
        title.set_xalign(0);
        field.set_hexpand();
        gtk_accessible_update_property(GTK_ACCESSIBLE(field.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                       name.c_str(), -1);
        attach(title, 0, row);
        attach(field, 1, row);
    }
};

/// Sets the direction of `widget` and its children.
void setDirection(Gtk::Widget& widget, Gtk::TextDirection direction) {
    std::vector<Gtk::Widget*> pending{&widget};
    while (!pending.empty()) {
        auto* const next = pending.back();
        pending.pop_back();
        next->set_direction(direction);
        for (auto* child = next->get_first_child(); child; child = child->get_next_sibling())
            pending.push_back(child);
    }
}

void describeAsAlert(Gtk::Window& sheet, const std::string& title, const std::string& message) {
    sheet.property_accessible_role() = Gtk::Accessible::Role::ALERT_DIALOG;
    gtk_accessible_update_property(GTK_ACCESSIBLE(sheet.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL, title.c_str(),
                                   GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, message.c_str(), -1);
}

}  // namespace

AlertSheet::AlertSheet(Gtk::Window& parent, Alert shown)
    : alert(std::move(shown)), agreeButton(alert.agreeButton), cancelButton(alert.cancelButton) {
    set_title(alert.title);
    set_transient_for(parent);
    set_destroy_with_parent();
    set_modal();
    set_resizable(false);

    auto& title = label(alert.title);
    title.add_css_class("title-4");
    auto& texts = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 12);
    texts.append(title);
    texts.append(messageArea(alert.message));
    Gtk::Widget* firstField = nullptr;
    if (alert.signIn) {
        auto& form = *Gtk::make_managed<SignInForm>();
        texts.append(form);
        firstField = &form.userName;
        agreeButton.signal_clicked().connect([this, &form] {
            *alert.signIn = {form.userName.get_text(), form.password.get_text()};
        });
    }
    texts.append(buttons());
    auto& content = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 18);
    content.set_margin(24);
    content.append(styleImage(alert.style));
    content.append(texts);
    set_child(content);
    setDirection(*this, isRightToLeft() ? Gtk::TextDirection::RTL : Gtk::TextDirection::LTR);
    describeAsAlert(*this, withoutZeroBytes(alert.title), withoutZeroBytes(alert.message));

    if (alert.isDestructive)
        agreeButton.add_css_class("destructive-action");
    auto& defaultButton = alert.isDestructive ? cancelButton : agreeButton;
    set_default_widget(defaultButton);
    set_focus(firstField ? *firstField : defaultButton);
    signal_map().connect(
        [this] { Glib::signal_idle().connect_once(sigc::mem_fun(*this, &AlertSheet::announceFocus)); });
    auto shortcuts = Gtk::ShortcutController::create();
    shortcuts->add_shortcut(Gtk::Shortcut::create(Gtk::KeyvalTrigger::create(GDK_KEY_Escape),
                                                  Gtk::NamedAction::create("window.close")));
    add_controller(shortcuts);
}

Gtk::Box& AlertSheet::buttons() {
    auto& row = *Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 12);
    row.set_halign(Gtk::Align::END);
    if (!alert.cancelButton.empty()) {
        cancelButton.set_size_request(buttonWidth, -1);
        cancelButton.signal_clicked().connect([this] { close(); });
        row.append(cancelButton);
    }
    agreeButton.set_size_request(buttonWidth, -1);
    agreeButton.signal_clicked().connect([this] {
        agreed = true;
        close();
    });
    row.append(agreeButton);
    return row;
}

/// A screen reader reads a sheet when the focus moves into it. GTK 4.8 does not report the focus that
/// a window has when it is shown, only a later change.
void AlertSheet::announceFocus() {
    auto* const focused = get_focus();
    unset_focus();
    if (focused)
        set_focus(*focused);
}

void AlertSheet::reportEnd() const {
    if (alert.onEnd)
        alert.onEnd(agreed);
}

}  // namespace vok
