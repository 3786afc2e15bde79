#include "platform/macos/MacMachine.h"

#include "foundation/Log.h"
#include "platform/macos/Bridging.h"
#include "platform/macos/CocoaCalls.h"

#include <memory>

#import <Collaboration/Collaboration.h>
#include <CoreServices/CoreServices.h>
#include <IOKit/IOKitLib.h>

namespace vok {

namespace {

using Step = LocalIdentitiesFailure::Step;

struct CFReleaser {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// Owns a Core Foundation object from a Create or Copy function; may be null.
template <class Ref>
using CFOwner = std::unique_ptr<std::remove_pointer_t<Ref>, CFReleaser>;

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
    const CFOwner<CFStringRef> description(CFErrorCopyDescription(error));
    return {Step::execution, toText((__bridge NSString*)description.get())};
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

std::vector<LocalIdentity> recordsOf(CFArrayRef identities) {
    std::vector<LocalIdentity> records;
    for (CFIndex i = 0; identities && i < CFArrayGetCount(identities); ++i) {
        auto* const identity =
            static_cast<CSIdentityRef>(const_cast<void*>(CFArrayGetValueAtIndex(identities, i)));
        CBIdentity* const account = identity ? [CBIdentity identityWithCSIdentity:identity] : nil;
        if (account)
            records.push_back(recordOf(account));
    }
    return records;
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
        const CFOwner<CFTypeRef> property(
            IORegistryEntryCreateCFProperty(entry.object, CFSTR("IOPlatformUUID"), kCFAllocatorDefault, 0));
        return property ? std::optional(toText((__bridge id)property.get())) : std::nullopt;
    });
}

LocalIdentities MacMachine::localIdentities() const {
    return callCocoa([]() -> LocalIdentities {
        const CSIdentityAuthorityRef authority = CSGetLocalIdentityAuthority();
        if (!authority)
            return LocalIdentitiesFailure{Step::authority, std::nullopt};
        const CFOwner<CSIdentityQueryRef> query(
            CSIdentityQueryCreate(kCFAllocatorDefault, kCSIdentityClassUser, authority));
        if (!query)
            return LocalIdentitiesFailure{Step::query, std::nullopt};
        CFErrorRef error = nullptr;
        const bool executed = CSIdentityQueryExecute(query.get(), 0, &error);
        const CFOwner<CFErrorRef> ownedError(error);
        if (!executed)
            return executionFailure(error);
        const CFOwner<CFArrayRef> identities(CSIdentityQueryCopyResults(query.get()));
        return recordsOf(identities.get());
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
