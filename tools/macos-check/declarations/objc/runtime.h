// The header of GCC's runtime has an inline function that ARC refuses; here it has a plain parameter.
#pragma once
#define object_getClass(arg) gcc_object_getClass(struct objc_object* object)
#include_next <objc/runtime.h>
#undef object_getClass
extern "C" Class object_getClass(id object);
