#include "app/AppDelegate.h"

#include "bridge/UrlQuery.h"
#include "config/DictionaryLookup.h"
#include "foundation/Exception.h"

#include <Poco/String.h>

#include <algorithm>
#include <array>

namespace vok {

using enum ExceptionKind;

namespace {

struct Command {
    std::string_view name;
    void (AppDelegate::*execute)(const CommandParams&);
};

/// In the order in which names are tried; compared without regard to case.
constexpr auto commands = std::to_array<Command>({
    {"install", &AppDelegate::executeInstallCommand},
    {"upgrade", &AppDelegate::executeInstallCommand},
    {"repair", &AppDelegate::executeInstallCommand},
    {"uninstall", &AppDelegate::executeUninstallCommand},
    {"reboot", &AppDelegate::executeRebootCommand},
    {"runfirefox", &AppDelegate::executeRunFirefoxCommand},
    {"cancel", &AppDelegate::executeCancelCommand},
    {"finish", &AppDelegate::executeFinishCommand},
    {"hide", &AppDelegate::executeHideCommand},
    {"getstate", &AppDelegate::executeGetStateCommand},
    {"getbrowsers", &AppDelegate::executeGetBrowsersCommand},
});

}  // namespace

void AppDelegate::executeUrlQuery(const std::optional<std::string>& urlQuery) {
    try {
        if (!urlQuery)
            raise(NSInvalidArgumentException, "Invalid argument (urlQuery is nil).");
        const auto params = UrlQueryToDictionary(urlQuery);
        const auto name = GetStringFromDict(&params, "command");
        const auto command = std::find_if(commands.begin(), commands.end(), [&](const Command& candidate) {
            return Poco::icompare(name, candidate.name.data()) == 0;
        });
        if (command == commands.end())
            raise(NSGenericException, "Unsupported command (command = '%@').", name);
        (this->*command->execute)(params);
    } catch (const Exception& exception) {
        showErrorMessage(StringWithFormat("Failed to execute command.\n%@", exception.message()));
    }
}

}  // namespace vok
