#pragma once

#include "platform/Machine.h"

namespace vok {

/// The user accounts that AccountsService lists on the system bus. An account is enabled unless it is locked,
/// and hidden when it is a system account; an empty full name counts as missing, since the account database
/// cannot tell the two apart. Its UUID is derived from `machineUUID` and the user number, so it is stable and
/// differs between machines; without `machineUUID` there is none. Fails with `authority` without a system
/// bus, and with `query` without AccountsService.
LocalIdentities accountsServiceIdentities(const std::optional<std::string>& machineUUID);

}  // namespace vok
