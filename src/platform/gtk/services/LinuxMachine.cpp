#include "platform/gtk/services/LinuxMachine.h"

#include "platform/gtk/services/AccountsService.h"
#include "platform/gtk/services/MessageBus.h"

#include <Poco/String.h>
#include <giomm.h>
#include <systemd/sd-id128.h>

#include <algorithm>
#include <string_view>

namespace vok {

namespace {

/// Makes the derived identifier specific to this program.
constexpr sd_id128_t productId =
    SD_ID128_MAKE(5f, 0c, 1d, 9b, 7e, 3a, 4c, 28, 9b, 64, 2a, d7, c1, 83, 50, ef);

/// Milliseconds; long enough for the user to enter a password.
constexpr int restartTimeout = 120'000;

/// A locale name such as "en_GB.UTF-8" as a BCP 47 code, "en-GB".
std::string languageCode(std::string_view locale) {
    std::string code(locale.substr(0, locale.find_first_of(".@")));
    std::ranges::replace(code, '_', '-');
    return code;
}

}  // namespace

std::string LinuxMachine::operatingSystemVersionString() const {
    g_autofree char* name = g_get_os_info(G_OS_INFO_KEY_PRETTY_NAME);
    return name ? name : "Linux";
}

std::optional<std::vector<std::string>> LinuxMachine::preferredLanguages() const {
    std::vector<std::string> languages;
    for (const char* const* name = g_get_language_names(); *name; ++name) {
        const auto code = languageCode(*name);
        if (code != "C" && code != "POSIX" && std::ranges::find(languages, code) == languages.end())
            languages.push_back(code);
    }
    return languages;
}

std::optional<std::string> LinuxMachine::platformUUID() const {
    sd_id128_t id;
    if (sd_id128_get_machine_app_specific(productId, &id) < 0)
        return std::nullopt;
    char text[SD_ID128_UUID_STRING_MAX];
    return Poco::toUpper(std::string(sd_id128_to_uuid_string(id, text)));
}

LocalIdentities LinuxMachine::localIdentities() const { return accountsServiceIdentities(platformUUID()); }

std::optional<std::string> LinuxMachine::restart() {
    try {
        const auto interactive = Glib::VariantContainerBase::create_tuple(Glib::Variant<bool>::create(true));
        messageBus(Gio::DBus::BusType::SYSTEM)
            ->call_sync("/org/freedesktop/login1", "org.freedesktop.login1.Manager", "Reboot", interactive,
                        "org.freedesktop.login1", restartTimeout);
        return std::nullopt;
    } catch (Glib::Error& error) {
        g_dbus_error_strip_remote_error(error.gobj());
        return error.what();
    }
}

}  // namespace vok
