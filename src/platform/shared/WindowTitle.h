#pragma once

#include <string>

namespace vok {

class Bundle;

/// The product's name: CFBundleDisplayName, or "Installer" when that is missing.
std::string windowTitle(const Bundle& bundle);

}  // namespace vok
