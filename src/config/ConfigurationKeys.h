#pragma once

/// The keys of installer_config.plist; every value is a string. The first five are required.
namespace vok::configuration {

/// URL of the first installation page, without a query.
inline constexpr auto firstInstallationPageUrl = "firstInstallationPageUrl";
/// More query pairs for that page, "key=value" joined by "&".
inline constexpr auto analyticParams = "analyticParams";
/// Prefix of every command URL, as the web view normalises it.
inline constexpr auto commandUrlPrefix = "commandUrlPrefix";
/// File name of the install tool in Tools.
inline constexpr auto installTool = "installTool";
/// File name of the launch-as-admin tool in Tools.
inline constexpr auto launchAsAdminTool = "launchAsAdminTool";
/// Agent identifier; by default a UUID of this machine.
inline constexpr auto agentId = "agentId";
/// Absolute directory of the installed agent; by default one named after the agent identifier.
inline constexpr auto targetDir = "targetDir";
/// Language of the pages; by default the user's preferred one.
inline constexpr auto lang = "lang";
/// The only hosts whose pages the window shows, separated by blanks; by default all hosts.
inline constexpr auto pageHosts = "pageHosts";
/// "yes" enables the web inspector; off by default.
inline constexpr auto developerMode = "developerMode";

}  // namespace vok::configuration
