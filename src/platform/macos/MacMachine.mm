#include "platform/macos/MacMachine.h"

#include "foundation/Log.h"
#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"

#import <Collaboration/Collaboration.h>
#include <CoreServices/CoreServices.h>
#include <IOKit/IOKitLib.h>

namespace vok {

namespace {

using Step = LocalIdentitiesFailure::Step;

/// Owns an object of the IOKit registry; may be null.
struct IOOwner {
    explicit IOOwner(io_object_t owned) : object(owned) {}
    IOOwner(const IOOwner&) = delete;
    ~IOOwner() {
        if (object != IO_OBJECT_NULL)
            IOObjectRelease(object);
    }

    const io_object_t object;
};

LocalIdentitiesFailure executionFailure(CFErrorRef error) {
    if (!error)
        return {Step::execution, std::nullopt};
    return {Step::execution, toText((__bridge_transfer NSString*)CFErrorCopyDescription(error))};
}

LocalIdentity recordOf(CBIdentity* account) {
    LocalIdentity record;
    if ([account respondsToSelector:@selector(isEnabled)])  // depends on the class of the account
        record.isEnabled = [static_cast<CBUserIdentity*>(account) isEnabled];
    else
        Log("Skipping the account '%@': whether it is enabled is unknown.", toText([account posixName]));
    record.isHidden = [account isHidden];
    record.UUIDString = toOptionalText([[account uniqueIdentifier] UUIDString]);
    record.fullName = toOptionalText([account fullName]);
    record.posixName = toOptionalText([account posixName]);
    return record;
}

}  // namespace

std::string MacMachine::operatingSystemVersionString() const {
    return callCocoa([] { return toText([[NSProcessInfo processInfo] operatingSystemVersionString]); });
}

std::optional<std::vector<std::string>> MacMachine::preferredLanguages() const {
    return callCocoa([]() -> std::optional<std::vector<std::string>> {
        NSArray* const codes = [[NSUserDefaults standardUserDefaults] objectForKey:@"AppleLanguages"];
        if (!codes)
            return std::nullopt;
        std::vector<std::string> languages;
        for (id code in codes)
            languages.push_back(toText(code));
        return languages;
    });
}

std::optional<std::string> MacMachine::platformUUID() const {
    return callCocoa([]() -> std::optional<std::string> {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"  // kIOMainPortDefault needs macOS 12
        const IOOwner entry(IORegistryEntryFromPath(kIOMasterPortDefault, "IOService:/"));
#pragma clang diagnostic pop
        const id property = (__bridge_transfer id)IORegistryEntryCreateCFProperty(
            entry.object, CFSTR("IOPlatformUUID"), kCFAllocatorDefault, 0);
        return property ? std::optional(toText(property)) : std::nullopt;
    });
}

LocalIdentities MacMachine::localIdentities() const {
    return callCocoa([]() -> LocalIdentities {
        const CSIdentityAuthorityRef authority = CSGetLocalIdentityAuthority();
        if (!authority)
            return LocalIdentitiesFailure{Step::authority, std::nullopt};
        const id query =
            (__bridge_transfer id)CSIdentityQueryCreate(kCFAllocatorDefault, kCSIdentityClassUser, authority);
        if (!query)
            return LocalIdentitiesFailure{Step::query, std::nullopt};
        CFErrorRef failure = nullptr;
        const bool executed = CSIdentityQueryExecute((__bridge CSIdentityQueryRef)query, 0, &failure);
        const id error = (__bridge_transfer id)failure;
        if (!executed)
            return executionFailure((__bridge CFErrorRef)error);
        NSArray* const identities =
            (__bridge_transfer NSArray*)CSIdentityQueryCopyResults((__bridge CSIdentityQueryRef)query);
        std::vector<LocalIdentity> records;
        for (id identity in identities) {
            CBIdentity* const account =
                identity ? [CBIdentity identityWithCSIdentity:(__bridge CSIdentityRef)identity] : nil;
            if (account)
                records.push_back(recordOf(account));
        }
        return records;
    });
}

std::optional<std::string> MacMachine::restart() {
    return callCocoa([]() -> std::optional<std::string> {
        NSAppleScript* const script =
            [[NSAppleScript alloc] initWithSource:@"tell application \"Finder\" to restart"];
        NSDictionary* errorInfo = nil;
        if ([script executeAndReturnError:&errorInfo])
            return std::nullopt;
        return toText([errorInfo description]);
    });
}

}  // namespace vok
