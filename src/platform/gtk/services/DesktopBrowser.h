#pragma once

#include <giomm/desktopappinfo.h>

#include <optional>
#include <string>

namespace vok {

/// The desktop entry of the browser of a type, "chrome" or "firefox", as its distribution, its maker, snap or
/// flatpak installs it; null when there is none. Chromium is taken for Chrome where that is not installed.
Glib::RefPtr<Gio::DesktopAppInfo> desktopBrowser(const std::string& type);

/// What the browser's program prints as its version for --version, such as "128.3.0esr"; nothing when it
/// prints none within 2 seconds.
std::optional<std::string> versionOf(const Gio::DesktopAppInfo& browser);

}  // namespace vok
