// The part of the dynamic linker's interface that the backend uses, from dyld(3).
#pragma once
#include <stdint.h>

/// 0, or -1 when the buffer is too small. The path may be a symbolic link and is not always absolute.
extern "C" int _NSGetExecutablePath(char* buffer, uint32_t* size);
