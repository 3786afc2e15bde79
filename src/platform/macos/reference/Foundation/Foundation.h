// Declarations from Apple's reference that the static check's own headers lack. No build uses this file.
#pragma once
#include_next <Foundation/Foundation.h>

@interface NSURL (Reference)
+ (NSURL*)URLWithDataRepresentation:(NSData*)data relativeToURL:(NSURL*)baseURL;  // macOS 10.11
@end
