#include "system/LocalUsers.h"

#include "foundation/Exception.h"
#include "platform/Machine.h"

namespace vok {

namespace {

constexpr auto headline = "Failed to get local users.";

[[noreturn]] void raiseFailure(const LocalIdentitiesFailure& failure) {
    using enum ExceptionKind;
    using enum LocalIdentitiesFailure::Step;
    switch (failure.step) {
    case authority:
        raise(NSGenericException, "%@\nCannot get authority.", headline);
    case query:
        raise(NSGenericException, "%@\nCannot create query.", headline);
    case execution:
        break;
    }
    if (failure.description)
        raise(NSGenericException, "%@\n%@", headline, *failure.description);
    raise(NSGenericException, "%@\nCannot execute query.", headline);
}

}  // namespace

Dictionary GetLocalUsers(const Machine& machine) {
    const auto identities = machine.localIdentities();
    if (const auto* failure = std::get_if<LocalIdentitiesFailure>(&identities))
        raiseFailure(*failure);

    Dictionary users;
    for (const auto& identity : std::get<std::vector<LocalIdentity>>(identities)) {
        const auto& name = identity.fullName ? identity.fullName : identity.posixName;
        if (identity.isEnabled && !identity.isHidden && identity.UUIDString && name)
            users[*identity.UUIDString] = *name;
    }
    return users;
}

}  // namespace vok
