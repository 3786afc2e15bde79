#pragma once

namespace vok {

/// Paths of the browsers on macOS. platform/Workspace.h finds browsers in other places.
inline constexpr auto chromeInfoPath = "/Applications/Google Chrome.app/Contents/Info.plist";
inline constexpr auto firefoxInfoPath = "/Applications/Firefox.app/Contents/Info.plist";
inline constexpr auto safariInfoPath = "/Applications/Safari.app/Contents/Info.plist";
inline constexpr auto firefoxPath = "/Applications/Firefox.app/Contents/MacOS/firefox";

}  // namespace vok
