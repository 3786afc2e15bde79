#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vok {

/// One user account. Values that the platform does not know are unset.
struct LocalIdentity {
    bool isEnabled = false;
    bool isHidden = false;
    std::optional<std::string> UUIDString;
    std::optional<std::string> fullName;
    std::optional<std::string> posixName;
};

/// Why the local identities could not be listed.
struct LocalIdentitiesFailure {
    enum class Step {
        authority,  ///< no authority is available
        query,      ///< the query could not be created
        execution,  ///< the query failed
    };
    Step step = Step::query;
    std::optional<std::string> description;  ///< of a failed query, if the platform has one
};

using LocalIdentities = std::variant<std::vector<LocalIdentity>, LocalIdentitiesFailure>;

/// The computer and its operating system. Every call blocks for a few seconds at most, except
/// `restart`, which may ask the user first.
class Machine {
public:
    virtual ~Machine() = default;

    /// Name and version of the operating system for display, for example "Debian GNU/Linux 12 (bookworm)".
    virtual std::string operatingSystemVersionString() const = 0;

    /// The user's preferred languages as BCP 47 codes, best first; nothing when there is no such list.
    virtual std::optional<std::vector<std::string>> preferredLanguages() const = 0;

    /// A UUID of this machine that survives reinstallation, in upper case; nothing when unavailable.
    virtual std::optional<std::string> platformUUID() const = 0;

    /// The accounts of this machine, in the platform's order.
    virtual LocalIdentities localIdentities() const = 0;

    /// Asks the system to restart. Returns nothing if it accepts, else a description of the failure.
    virtual std::optional<std::string> restart() = 0;
};

}  // namespace vok
