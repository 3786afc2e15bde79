#pragma once

#include "platform/Bundle.h"

namespace vok {

/// The product's name: CFBundleDisplayName, or "Installer" when that is missing.
inline std::string windowTitle(const Bundle& bundle) {
    const auto info = bundle.infoDictionary();
    const auto name = info.find("CFBundleDisplayName");
    return name == info.end() ? "Installer" : name->second;
}

}  // namespace vok
