#include "system/LocalUsers.h"

#include "foundation/Exception.h"
#include "platform/Machine.h"

namespace vok {

namespace {

std::string reasonOf(const LocalIdentitiesFailure& failure) {
    switch (failure.step) {
    case LocalIdentitiesFailure::Step::authority:
        return "Cannot get authority.";
    case LocalIdentitiesFailure::Step::query:
        return "Cannot create query.";
    default:
        return failure.description.value_or("Cannot execute query.");
    }
}

}  // namespace

Dictionary GetLocalUsers(const Machine& machine) {
    const auto identities = machine.localIdentities();
    if (const auto* failure = std::get_if<LocalIdentitiesFailure>(&identities))
        raise(ExceptionKind::NSGenericException, "Failed to get local users.\n%@", reasonOf(*failure));

    Dictionary users;
    for (const auto& identity : std::get<std::vector<LocalIdentity>>(identities)) {
        const auto& name = identity.fullName ? identity.fullName : identity.posixName;
        if (identity.isEnabled && !identity.isHidden && identity.UUIDString && name)
            users[*identity.UUIDString] = *name;
    }
    return users;
}

}  // namespace vok
