#include "app/AppDelegate.h"

#include "config/ConfigurationKeys.h"
#include "config/DictionaryLookup.h"
#include "foundation/Exception.h"
#include "foundation/PercentEscapes.h"
#include "platform/Bundle.h"
#include "system/LocalUsers.h"

namespace vok {

namespace {

/// The query pair of the machine's last local account; empty without one, or if accounts cannot be listed.
std::string accountPair(const Machine& machine) {
    try {
        const auto users = GetLocalUsers(machine);
        if (users.empty())
            return {};
        const auto& [uuid, name] = *users.rbegin();
        return StringWithFormat("&account[%@]=%@", uuid, name);
    } catch (const Exception&) {
        return {};
    }
}

}  // namespace

std::string AppDelegate::getSplashPageUrl() const {
    return AddPercentEscapes(StringWithFormat("file://%@/%@", getToolsDirPath(), "splash.html"));
}

std::string AppDelegate::getFirstInstallationPageUrl() const {
    const auto base = GetStringFromDict(config(), configuration::firstInstallationPageUrl);
    const auto analytics = GetStringFromDict(config(), configuration::analyticParams);
    const auto info = platform.bundle.infoDictionary();
    const auto version = GetStringFromDict(&info, "CFBundleVersion");
    const auto os = AddPercentEscapes(getOsVersion());
    const auto url = StringWithFormat("%@?agentId=%@&version=%@&os=%@&lang=%@&%@", base, agentId, version, os,
                                      preferredLang, analytics);
    return AddPercentEscapes(url + accountPair(platform.machine));
}

}  // namespace vok
