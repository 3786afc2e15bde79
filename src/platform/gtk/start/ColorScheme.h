#pragma once

#include <giomm/dbusproxy.h>

namespace vok {

/// Makes toolkit and pages follow the desktop's light or dark style, as the settings portal reports it. Does
/// not block; without a portal the toolkit's own theme decides.
class ColorScheme {
public:
    ColorScheme();

private:
    void onProxyReady(const Glib::RefPtr<Gio::AsyncResult>& result);
    void onSettingChanged(const Glib::ustring& signal, Glib::VariantContainerBase arguments);

    Glib::RefPtr<Gio::DBus::Proxy> portal;
};

}  // namespace vok
