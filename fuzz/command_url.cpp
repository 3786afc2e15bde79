// Finishes the load of a command URL. The input is what follows the prefix. The URL parser is real, the rest
// of the port is a fake, and no process is started.
//
// A command URL has exactly one outcome, and a second run has the same: that of its command if its parameters
// are present, else an error sheet. A page is sent only to its own callback URL, with the whole report of the
// command. A shell line has exactly the expected quoted words.

#include "Property.h"
#include "app/AppDelegate.h"
#include "bridge/UrlQuery.h"
#include "commands/ExecuteScript.h"
#include "commands/ProductInfo.h"
#include "commands/RunProcess.h"
#include "foundation/Exception.h"
#include "platform/gtk/services/GlibURLParser.h"
#include "support/FakePlatform.h"

#include <Poco/String.h>

#include <algorithm>
#include <cstring>

using namespace vok;
using namespace vok::fuzz;

namespace {

const std::string prefix = "https://pages.test/command";

struct Command {
    std::string name;
    std::vector<std::string> needs;  ///< parameters
    std::string outcome;             ///< beginning of its event
    std::string prelude{};           ///< the event before the outcome
    std::string result{};            ///< end of its report
};

const Command commands[] = {
    {"install", {"configTemplateUrl", "installerUrl", "reportUrl"}, "script "},
    {"upgrade", {"configTemplateUrl", "installerUrl", "reportUrl"}, "script "},
    {"repair", {"configTemplateUrl", "installerUrl", "reportUrl"}, "script "},
    {"uninstall", {"reportUrl"}, "script "},
    {"reboot", {}, "terminate", "restart"},
    {"runfirefox", {}, "open Firefox", "process /Applications/Firefox.app/Contents/MacOS/firefox"},
    {"cancel", {"callbackUrl"}, "load "},
    {"finish", {"callbackUrl"}, "load ", "perform after 0.000000"},
    {"hide", {"callbackUrl"}, "load ", "miniaturize"},
    {"getstate", {"callbackUrl"}, "load ", "", "productState=Installed&version=3.2"},
    {"getbrowsers", {"callbackUrl"}, "load ", "", "type[0]=safari&version[0]=17&"},
};

test::FakePlatform desktop;
const GlibURLParser urls;
AppDelegate installer({desktop, desktop, desktop, desktop, desktop, desktop, urls, desktop});

test::Events finishLoad(const std::string& url) {
    desktop.currentURL = url;
    installer.webViewDidFinishLoadForFrame(desktop, desktop);
    return desktop.takeEvents();
}

/// The parameters of the command URL; nothing when it has no query, or one that cannot be decoded.
std::optional<CommandParams> paramsOf(const std::string& url) {
    const auto parsed = urls.URLWithString(url);
    if (!parsed || !parsed->query)
        return std::nullopt;
    try {
        return UrlQueryToDictionary(parsed->query);
    } catch (const Exception&) {
        return std::nullopt;
    }
}

const Command* commandOf(const CommandParams& params) {
    const auto name = params.find("command");
    const auto* const command = std::ranges::find_if(commands, [&](const Command& candidate) {
        return name != params.end() && Poco::toLower(name->second) == candidate.name;
    });
    return command == std::end(commands) ? nullptr : command;
}

std::string normalised(const std::string& url) {
    const auto parsed = urls.URLWithString(url);
    return parsed ? parsed->absoluteString : url;
}

void checkReport(const std::string& url, const Command& command, const CommandParams& params) {
    static const auto pid = installer.formatCallbackUrl(true, "", "", "", "").substr(5, 36);
    const auto report = "pid=" + pid + "&agentId=AGENT&action=" + params.at("command") +
                        "&event=finished&result=success&" + command.result;
    const auto& base = params.at("callbackUrl");
    require(url == normalised(base + "?" + report) || url == normalised(base + "&" + report),
            "the report goes to the callback URL");
    const auto sent = urls.URLWithString(url);
    require(!sent || url.find('#') != url.npos || (sent->query && sent->query->ends_with(report)),
            "the report ends the query");
}

void checkScript(const std::string& script, const Command& command) {
    const auto words = 6 + command.needs.size();
    require(static_cast<std::size_t>(std::ranges::count(script, '"')) == 2 * words &&
                script.find_first_of("\n\\`") == script.npos,
            "a shell line has the words that it should have");
}

}  // namespace

// These replace the functions that start a process.

void vok::ExecuteScript(const std::optional<std::string>& script) { desktop.record("script " + *script); }

void vok::RunProcess(const char* path) { desktop.record(std::string("process ") + path); }

std::int32_t vok::GetInstalledProductInfo(const char*, const char*, const char*, std::int32_t* installed,
                                          char* version, std::uint32_t size) noexcept {
    *installed = 1;
    std::snprintf(version, size, "3.2");
    return 0;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    desktop.propertyLists = {
        {desktop.bundle + "/Contents/MacOS/Tools/installer_config.plist",
         {{"installTool", "install tool"},
          {"launchAsAdminTool", "admin tool"},
          {"agentId", "AGENT"},
          {"targetDir", "/opt/target"},
          {"commandUrlPrefix", prefix}}},
        {"/Applications/Safari.app/Contents/Info.plist", {{"CFBundleShortVersionString", "17"}}}};
    installer.applicationDidFinishLaunching();
    desktop.takeEvents();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto url = prefix + std::string(reinterpret_cast<const char*>(data), size);
    auto events = finishLoad(url);
    require(finishLoad(url) == events, "a command URL does the same when it comes again");

    const auto params = paramsOf(url).value_or(CommandParams());
    const auto* const command = commandOf(params);
    if (command && !events.empty() && events.front() == command->prelude)
        events.erase(events.begin());
    require(events.size() == 1, "a command URL has exactly one outcome");

    const auto isGiven = [&](const std::string& need) { return params.contains(need); };
    const bool able = command && std::ranges::all_of(command->needs, isGiven);
    const auto& outcome = events.front();
    require(outcome.starts_with(able ? command->outcome : "critical sheet Error [OK] Failed to "),
            "a command has its own outcome if its parameters are there, else an error sheet");
    const auto detail = outcome.substr(able ? command->outcome.size() : 0);
    if (able && command->outcome == "load ")
        checkReport(detail, *command, params);
    if (able && command->outcome == "script ")
        checkScript(detail, *command);
    return 0;
}
