// The part of IOKit that the backend uses, from Apple's reference.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

extern "C" {

typedef unsigned int mach_port_t;
typedef int kern_return_t;
typedef mach_port_t io_object_t;
typedef io_object_t io_registry_entry_t;
typedef unsigned int IOOptionBits;
typedef char io_string_t[512];

#define IO_OBJECT_NULL ((io_object_t)0)
extern const mach_port_t kIOMasterPortDefault;

io_registry_entry_t IORegistryEntryFromPath(mach_port_t masterPort, const io_string_t path);
CFTypeRef IORegistryEntryCreateCFProperty(io_registry_entry_t entry, CFStringRef key,
                                          CFAllocatorRef allocator, IOOptionBits options)
    __attribute__((cf_returns_retained));
kern_return_t IOObjectRelease(io_object_t object);

}  // extern "C"
