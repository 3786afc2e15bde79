#pragma once

#include "platform/Machine.h"

namespace vok {

class MacMachine final : public Machine {
public:
    std::string operatingSystemVersionString() const override;
    /// The user preference "AppleLanguages".
    std::optional<std::vector<std::string>> preferredLanguages() const override;
    /// "IOPlatformUUID" of the registry's root service entry.
    std::optional<std::string> platformUUID() const override;
    /// The users of the local identity authority.
    LocalIdentities localIdentities() const override;
    /// By Finder. The user may be asked first whether the installer may tell Finder to.
    std::optional<std::string> restart() override;
};

}  // namespace vok
