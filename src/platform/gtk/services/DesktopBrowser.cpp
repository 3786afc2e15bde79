#include "platform/gtk/services/DesktopBrowser.h"

#include <Poco/RegularExpression.h>
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
