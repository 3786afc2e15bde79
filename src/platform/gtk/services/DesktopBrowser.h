#pragma once

#include <giomm/desktopappinfo.h>

#include <optional>
#include <string>

namespace vok {

/// The desktop entry of the browser `type`, "chrome" or "firefox", as installed by the distribution, the
/// vendor, snap or flatpak; null when there is none. "chrome" is Chromium if Chrome is not installed.
Glib::RefPtr<Gio::DesktopAppInfo> desktopBrowser(const std::string& type);

/// The version that the browser prints for --version, such as "128.3.0esr"; nothing when it prints none
/// within 2 seconds.
std::optional<std::string> versionOf(const Gio::DesktopAppInfo& browser);

}  // namespace vok
