#include "app/AppDelegate.h"

#include "config/ConfigurationKeys.h"
#include "config/DictionaryLookup.h"
#include "foundation/Exception.h"
#include "platform/Bundle.h"
#include "platform/Machine.h"
#include "platform/PropertyListReader.h"
#include "system/PlatformUuid.h"

namespace vok {

using enum ExceptionKind;

std::string AppDelegate::getToolsDirPath() const {
    return StringWithFormat("%@/%@", platform.bundle.bundlePath(), "Contents/MacOS/Tools");
}

std::string AppDelegate::getInstallToolPath() const {
    const auto toolsDir = getToolsDirPath();
    return StringWithFormat("%@/%@", toolsDir, GetStringFromDict(config(), configuration::installTool));
}

std::string AppDelegate::getLaunchAsAdminToolPath() const {
    const auto toolsDir = getToolsDirPath();
    return StringWithFormat("%@/%@", toolsDir, GetStringFromDict(config(), configuration::launchAsAdminTool));
}

Dictionary AppDelegate::loadAppConfig() const {
    const auto path = StringWithFormat("%@/%@", getToolsDirPath(), "installer_config.plist");
    auto dictionary = platform.propertyLists.dictionaryWithContentsOfFile(path);
    if (!dictionary)
        raise(NSGenericException, "Failed to load app config from the '%@' file.", path);
    return *std::move(dictionary);
}

std::string AppDelegate::getAgentId() const {
    const auto configured = config() ? FindStringInDict(config(), configuration::agentId) : std::nullopt;
    return configured ? *configured : GetPlatformUuid(platform.machine);
}

std::string AppDelegate::getOsVersion() const {
    return StringWithFormat("Mac OS %@", platform.machine.operatingSystemVersionString());
}

std::string AppDelegate::getTargetDirForAgent(const std::optional<std::string>& agent) const {
    if (const auto configured =
            config() ? FindStringInDict(config(), configuration::targetDir) : std::nullopt)
        return *configured;
    if (!agent)
        raise(NSInvalidArgumentException, "Failed to get target dir (agentId is nil).");
    return StringWithFormat("/usr/local/etc/vok-%@", *agent);
}

std::string AppDelegate::getPreferredLanguage(const std::string& defaultLang) const {
    try {
        if (const auto configured = config() ? FindStringInDict(config(), configuration::lang) : std::nullopt)
            return *configured;
        const auto languages = platform.machine.preferredLanguages();
        return languages && !languages->empty() ? languages->front() : defaultLang;
    } catch (const Exception&) {
        return defaultLang;
    }
}

}  // namespace vok
