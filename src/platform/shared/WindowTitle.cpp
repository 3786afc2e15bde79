#include "platform/shared/WindowTitle.h"

#include "platform/Bundle.h"

namespace vok {

std::string windowTitle(const Bundle& bundle) {
    const auto info = bundle.infoDictionary();
    const auto name = info.find("CFBundleDisplayName");
    return name == info.end() ? "Installer" : name->second;
}

}  // namespace vok
