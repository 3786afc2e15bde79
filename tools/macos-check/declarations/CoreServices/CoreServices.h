// The part of Core Services that the backend uses, identities, from Apple's reference.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

extern "C" {

typedef struct __CSIdentity* CSIdentityRef;
typedef struct __CSIdentityAuthority* CSIdentityAuthorityRef;
typedef struct __CSIdentityQuery* CSIdentityQueryRef;
typedef CFIndex CSIdentityClass;
typedef CFOptionFlags CSIdentityQueryFlags;

enum { kCSIdentityClassUser = 1, kCSIdentityClassGroup = 2 };

CSIdentityAuthorityRef CSGetLocalIdentityAuthority(void);
CSIdentityQueryRef CSIdentityQueryCreate(CFAllocatorRef allocator, CSIdentityClass identityClass,
                                         CSIdentityAuthorityRef authority)
    __attribute__((cf_returns_retained));
Boolean CSIdentityQueryExecute(CSIdentityQueryRef query, CSIdentityQueryFlags flags, CFErrorRef* error);
CFArrayRef CSIdentityQueryCopyResults(CSIdentityQueryRef query) __attribute__((cf_returns_retained));

}  // extern "C"
