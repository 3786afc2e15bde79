// What GNUstep's headers lack of Foundation, from Apple's reference.
#pragma once
#include_next <Foundation/Foundation.h>
#import <Foundation/NSAppleScript.h>

@interface NSAppleScript (Reference)
- (instancetype)initWithSource:(NSString*)source;
- (NSAppleEventDescriptor*)executeAndReturnError:(NSDictionary**)errorInfo;
@end

@interface NSHTTPURLResponse (Reference)
- (NSString*)valueForHTTPHeaderField:(NSString*)field;  // macOS 10.15
@end

@interface NSURL (Reference)
+ (NSURL*)URLWithDataRepresentation:(NSData*)data relativeToURL:(NSURL*)baseURL;  // macOS 10.11
@end
