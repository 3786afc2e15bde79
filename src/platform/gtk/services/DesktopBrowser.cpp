#include "platform/gtk/services/DesktopBrowser.h"

#include <Poco/RegularExpression.h>
#include <glibmm/shell.h>
#include <glibmm/spawn.h>

#include <array>
#include <filesystem>

namespace vok {

namespace {

struct Entry {
    const char* type;
    const char* id;
};

/// In the order in which they are looked for.
constexpr auto entries = std::to_array<Entry>({
    {"firefox", "firefox-esr.desktop"},           // Debian
    {"firefox", "firefox.desktop"},               // Mozilla, Fedora
    {"firefox", "firefox_firefox.desktop"},       // snap
    {"firefox", "org.mozilla.firefox.desktop"},   // flatpak
    {"chrome", "google-chrome.desktop"},          // Google
    {"chrome", "com.google.Chrome.desktop"},      // flatpak
    {"chrome", "chromium.desktop"},               // Debian
    {"chrome", "chromium-browser.desktop"},       // Fedora
    {"chrome", "chromium_chromium.desktop"},      // snap
    {"chrome", "org.chromium.Chromium.desktop"},  // flatpak
});

/// The command that prints the browser's version. A flatpak's program is flatpak itself, which gets the
/// identifier that names the desktop entry.
std::vector<std::string> versionCommand(const Gio::DesktopAppInfo& browser) {
    const auto program = Glib::shell_parse_argv(browser.get_commandline()).at(0);
    std::vector<std::string> command = {"timeout", "2", program};
    if (std::filesystem::path(program).filename() == "flatpak") {
        command.emplace_back("run");
        command.push_back(std::filesystem::path(browser.get_filename()).stem());
    }
    command.emplace_back("--version");
    return command;
}

}  // namespace

Glib::RefPtr<Gio::DesktopAppInfo> desktopBrowser(const std::string& type) {
    for (const auto& entry : entries) {
        if (type != entry.type)
            continue;
        if (auto browser = Gio::DesktopAppInfo::create(entry.id))
            return browser;
    }
    return {};
}

std::optional<std::string> versionOf(const Gio::DesktopAppInfo& browser) try {
    std::string output;
    Glib::spawn_sync("", versionCommand(browser),
                     Glib::SpawnFlags::SEARCH_PATH | Glib::SpawnFlags::STDERR_TO_DEV_NULL, {}, &output);
    std::string version;
    if (Poco::RegularExpression(R"(\d+(\.\d+)+\w*)").extract(output, version) == 0)
        return std::nullopt;
    return version;
} catch (const Glib::Error&) {
    return std::nullopt;
}

}  // namespace vok
