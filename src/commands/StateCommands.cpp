#include "app/AppDelegate.h"

#include "commands/ProductInfo.h"
#include "config/BrowserPaths.h"
#include "foundation/StringWithFormat.h"
#include "platform/Workspace.h"

#include <array>
#include <unistd.h>

namespace vok {

void AppDelegate::executeGetStateCommand(const CommandParams& params) {
    const auto installTool = getInstallToolPath();
    const auto targetDir = getTargetDirForAgent(agentId);
    std::int32_t installed = 0;
    std::array<char, 32> version{};
    const auto code = GetInstalledProductInfo(installTool.c_str(), agentId ? agentId->c_str() : nullptr,
                                              targetDir.c_str(), &installed, version.data(), version.size());
    const auto result = code == 0 ? StringWithFormat("productState=%@&version=%s",
                                                     installed ? "Installed" : "NotInstalled", version.data())
                                  : "productState=NotInstalled";
    executeCommandCallback(&params, true, result);
}

void AppDelegate::executeGetBrowsersCommand(const CommandParams& params) {
    struct Candidate {
        const char* type;
        const std::optional<std::string>& atStart;
        const char* infoPath;
    };
    std::string list;
    int index = -1;
    for (const auto& [type, atStart, infoPath] : {Candidate{"chrome", versionChrome, chromeInfoPath},
                                                  Candidate{"firefox", versionFireFox, firefoxInfoPath},
                                                  Candidate{"safari", versionSafari, safariInfoPath}}) {
        const bool isElsewhere = !atStart && access(infoPath, F_OK) != 0;
        const auto version = isElsewhere ? platform.workspace.browserVersion(type) : atStart;
        if (!version)
            continue;
        ++index;
        list = StringWithFormat("%@type[%d]=%@&version[%d]=%@&", list, index, type, index, *version);
    }
    executeCommandCallback(&params, true, index == -1 ? "type[]=&version[]=&" : list);
}

}  // namespace vok
