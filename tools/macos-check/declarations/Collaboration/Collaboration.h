// The part of Collaboration that the backend uses, from Apple's reference.
#pragma once
#include <CoreServices/CoreServices.h>
#import <Foundation/Foundation.h>

@interface CBIdentity : NSObject <NSCopying>
+ (CBIdentity*)identityWithCSIdentity:(CSIdentityRef)csIdentity;
- (NSString*)fullName;
- (NSString*)posixName;
- (NSUUID*)uniqueIdentifier;
- (BOOL)isHidden;
@end

@interface CBUserIdentity : CBIdentity
- (BOOL)isEnabled;
@end
