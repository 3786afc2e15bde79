#include "platform/gtk/services/UriHandlerWorkspace.h"

#include "foundation/Log.h"

#include <Poco/RegularExpression.h>
#include <gdk/gdk.h>
#include <gdkmm/applaunchcontext.h>
#include <giomm/desktopappinfo.h>
#include <glibmm/shell.h>
#include <glibmm/spawn.h>

#include <algorithm>
#include <array>
#include <filesystem>

namespace vok {

namespace {

struct Entry {
    const char* type;
    const char* id;
};

/// In order of preference.
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

/// The program that the desktop entry starts. A snap's entry starts it by env, with variables before it.
std::string programOf(const Gio::DesktopAppInfo& browser) {
    const auto words = Glib::shell_parse_argv(browser.get_commandline());
    const auto isProgram = [](const std::string& word) {
        return word.find('=') == word.npos && std::filesystem::path(word).filename() != "env";
    };
    const auto program = std::ranges::find_if(words, isProgram);
    return program == words.end() ? words.at(0) : *program;
}

/// The command that prints the browser's version. For a flatpak it runs flatpak with the application's
/// identifier, which is the name of the desktop entry.
std::vector<std::string> versionCommand(const Gio::DesktopAppInfo& browser) {
    const auto program = programOf(browser);
    std::vector<std::string> command = {"timeout", "--kill-after=1", "2", program};
    if (std::filesystem::path(program).filename() == "flatpak") {
        command.emplace_back("run");
        command.push_back(std::filesystem::path(browser.get_filename()).stem());
    }
    command.emplace_back("--version");
    return command;
}

/// The desktop entry of the browser `type`, as installed by the distribution, the vendor, snap or flatpak;
/// null when there is none. "chrome" is Chromium if Chrome is not installed.
Glib::RefPtr<Gio::DesktopAppInfo> desktopBrowser(const std::string& type) {
    for (const auto& entry : entries) {
        if (type != entry.type)
            continue;
        if (auto browser = Gio::DesktopAppInfo::create(entry.id))
            return browser;
    }
    return {};
}

/// What the browser prints for --version, such as "128.3.0esr"; nothing when it prints none within 2 seconds.
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

/// The launch context that brings a started program's window to the front.
Glib::RefPtr<Gio::AppLaunchContext> launchContext() {
    // gtkmm's own call leaks a reference (seen with gtkmm 4.8).
    return Glib::wrap(gdk_display_get_app_launch_context(gdk_display_get_default()));
}

}  // namespace

void UriHandlerWorkspace::openURL(const std::string& url) {
    Gio::AppInfo::launch_default_for_uri_async(
        url, launchContext(), [url](const Glib::RefPtr<Gio::AsyncResult>& result) {
            try {
                Gio::AppInfo::launch_default_for_uri_finish(result);
            } catch (const Glib::Error& error) {
                Log("Failed to open '%@' in the default browser (%s).", url, error.what());
            }
        });
}

std::optional<std::string> UriHandlerWorkspace::browserVersion(const std::string& type) {
    const auto known = browserVersions.find(type);
    if (known != browserVersions.end())
        return known->second;
    const auto browser = desktopBrowser(type);
    return browserVersions[type] = browser ? versionOf(*browser) : std::nullopt;
}

void UriHandlerWorkspace::openFirefox() {
    const auto firefox = desktopBrowser("firefox");
    if (!firefox)
        return Log("Failed to start Firefox (it has no desktop entry).");
    try {
        firefox->launch(std::vector<Glib::RefPtr<Gio::File>>(), launchContext());
    } catch (const Glib::Error& error) {
        Log("Failed to start Firefox (%s).", error.what());
    }
}

}  // namespace vok
