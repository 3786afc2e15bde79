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
    /// Asks Finder to restart. The system may ask the user to let the installer control Finder.
    std::optional<std::string> restart() override;
};

}  // namespace vok
