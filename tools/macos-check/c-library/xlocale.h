// What the C++ library expects of the C library on macOS and musl's headers lack.
#pragma once
#include <ctype.h>
#include <locale.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <wchar.h>
#include <wctype.h>

typedef unsigned int __uint32_t;
typedef unsigned short __uint16_t;
typedef int __darwin_ct_rune_t;

enum {
    _CTYPE_A = 0x100,
    _CTYPE_C = 0x200,
    _CTYPE_D = 0x400,
    _CTYPE_G = 0x800,
    _CTYPE_L = 0x1000,
    _CTYPE_P = 0x2000,
    _CTYPE_S = 0x4000,
    _CTYPE_U = 0x8000,
    _CTYPE_X = 0x10000,
    _CTYPE_B = 0x20000,
    _CTYPE_R = 0x40000,
};

#ifdef __cplusplus
extern "C" {
#endif

long long strtoll_l(const char*, char**, int, locale_t);
unsigned long long strtoull_l(const char*, char**, int, locale_t);
int sscanf_l(const char*, locale_t, const char*, ...);
int snprintf_l(char*, size_t, locale_t, const char*, ...);
int asprintf_l(char**, locale_t, const char*, ...);
size_t mbsnrtowcs_l(wchar_t*, const char**, size_t, size_t, mbstate_t*, locale_t);
size_t wcsnrtombs_l(char*, const wchar_t**, size_t, size_t, mbstate_t*, locale_t);
wint_t btowc_l(int, locale_t);
int wctob_l(wint_t, locale_t);
size_t mbrtowc_l(wchar_t*, const char*, size_t, mbstate_t*, locale_t);
size_t wcrtomb_l(char*, wchar_t, mbstate_t*, locale_t);
int mbtowc_l(wchar_t*, const char*, size_t, locale_t);
size_t mbrlen_l(const char*, size_t, mbstate_t*, locale_t);
size_t mbsrtowcs_l(wchar_t*, const char**, size_t, mbstate_t*, locale_t);
struct lconv* localeconv_l(locale_t);
int __maskrune(int, unsigned long);
extern struct {
    unsigned __runetype[256];
    int __maplower[256], __mapupper[256];
} _DefaultRuneLocale;

#ifdef __cplusplus
}
#endif
