#pragma once

// libc++ for Apple's systems asks for the locale functions of this header; the C library at hand spreads them over
// its own headers, as macros in part, and lacks some.

#include <ctype.h>
#include <locale.h>
#include <stdio.h>
#include <stdlib.h>
#include <time.h>
#include <wchar.h>
#include <wctype.h>

#undef isalnum_l
#undef isalpha_l
#undef isblank_l
#undef iscntrl_l
#undef isdigit_l
#undef isgraph_l
#undef islower_l
#undef isprint_l
#undef ispunct_l
#undef isspace_l
#undef isupper_l
#undef isxdigit_l
#undef tolower_l
#undef toupper_l

extern "C" {
int sscanf_l(const char* text, locale_t locale, const char* format, ...);
int snprintf_l(char* text, size_t size, locale_t locale, const char* format, ...);
int asprintf_l(char** text, locale_t locale, const char* format, ...);
struct lconv* localeconv_l(locale_t locale);
}
