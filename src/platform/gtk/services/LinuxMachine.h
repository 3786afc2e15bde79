#pragma once

#include "platform/Machine.h"

namespace vok {

/// The machine as described by os-release, the locale, systemd's machine identifier, AccountsService and
/// logind. A service that is not running results in a failure or nothing, within a few seconds.
class LinuxMachine final : public Machine {
public:
    std::string operatingSystemVersionString() const override;
    std::optional<std::vector<std::string>> preferredLanguages() const override;
    std::optional<std::string> platformUUID() const override;
    LocalIdentities localIdentities() const override;
    std::optional<std::string> restart() override;
};

}  // namespace vok
