#pragma once

namespace vok {

/// Where the browsers are on a Mac. Other systems have some of them elsewhere: see platform/Workspace.h.
inline constexpr auto chromeInfoPath = "/Applications/Google Chrome.app/Contents/Info.plist";
inline constexpr auto firefoxInfoPath = "/Applications/Firefox.app/Contents/Info.plist";
inline constexpr auto safariInfoPath = "/Applications/Safari.app/Contents/Info.plist";
inline constexpr auto firefoxPath = "/Applications/Firefox.app/Contents/MacOS/firefox";

}  // namespace vok
