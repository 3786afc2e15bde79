// The part of Core Foundation that the backend uses, from Apple's reference.
#pragma once
#include <stdbool.h>
#include <stdint.h>

extern "C" {

@class NSArray, NSError, NSString;

typedef unsigned char Boolean;
typedef long CFIndex;
typedef unsigned long CFOptionFlags;
typedef const void* CFTypeRef;
typedef const struct __attribute__((objc_bridge(id))) __CFAllocator* CFAllocatorRef;
typedef const struct __attribute__((objc_bridge(NSString))) __CFString* CFStringRef;
typedef const struct __attribute__((objc_bridge(NSArray))) __CFArray* CFArrayRef;
typedef struct __attribute__((objc_bridge(NSError))) __CFError* CFErrorRef;

extern const CFAllocatorRef kCFAllocatorDefault;
#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))

void CFRelease(CFTypeRef object);
CFIndex CFArrayGetCount(CFArrayRef array);
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
CFStringRef CFErrorCopyDescription(CFErrorRef error);

}  // extern "C"
