#include "platform/gtk/start/ColorScheme.h"

#include <gtkmm/settings.h>

namespace vok {

namespace {

constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto colorScheme = "color-scheme";
constexpr guint32 preferDark = 1;

/// `value` is the setting, in one or more nested variants.
void apply(Glib::VariantBase value) {
    while (value.is_of_type(Glib::VARIANT_TYPE_VARIANT))
        value = Glib::VariantBase::cast_dynamic<Glib::VariantContainerBase>(value).get_child(0);
    const auto scheme = Glib::VariantBase::cast_dynamic<Glib::Variant<guint32>>(value).get();
    Gtk::Settings::get_default()->property_gtk_application_prefer_dark_theme() = scheme == preferDark;
}

Glib::ustring text(Glib::VariantContainerBase arguments, gsize index) {
    return Glib::VariantBase::cast_dynamic<Glib::Variant<Glib::ustring>>(arguments.get_child(index)).get();
}

}  // namespace

ColorScheme::ColorScheme() {
    Gio::DBus::Proxy::create_for_bus(Gio::DBus::BusType::SESSION, "org.freedesktop.portal.Desktop",
                                     "/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings",
                                     sigc::mem_fun(*this, &ColorScheme::onProxyReady));
}

void ColorScheme::onProxyReady(const Glib::RefPtr<Gio::AsyncResult>& result) {
    try {
        portal = Gio::DBus::Proxy::create_for_bus_finish(result);
    } catch (const Glib::Error&) {
        return;  // no session bus
    }
    portal->signal_signal().connect(
        [this](const Glib::ustring&, const Glib::ustring& signal,
               const Glib::VariantContainerBase& arguments) { onSettingChanged(signal, arguments); });
    const auto setting =
        Glib::VariantContainerBase::create_tuple({Glib::Variant<Glib::ustring>::create(appearance),
                                                  Glib::Variant<Glib::ustring>::create(colorScheme)});
    portal->call(
        "Read",
        [this](const Glib::RefPtr<Gio::AsyncResult>& answer) {
            try {
                apply(portal->call_finish(answer).get_child(0));
            } catch (const Glib::Error&) {
                // no portal, or one without this setting
            }
        },
        setting);
}

void ColorScheme::onSettingChanged(const Glib::ustring& signal, Glib::VariantContainerBase arguments) {
    if (signal == "SettingChanged" && text(arguments, 0) == appearance && text(arguments, 1) == colorScheme)
        apply(arguments.get_child(2));
}

}  // namespace vok
