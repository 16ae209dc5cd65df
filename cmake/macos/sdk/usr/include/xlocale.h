// The part of macOS's header that libc++ uses and musl lacks.
#pragma once

#include <locale.h>
#include <stddef.h>

extern "C" {
int snprintf_l(char* text, size_t size, locale_t locale, const char* format, ...)
    __attribute__((format(printf, 4, 5)));
int asprintf_l(char** text, locale_t locale, const char* format, ...) __attribute__((format(printf, 3, 4)));
int sscanf_l(const char* text, locale_t locale, const char* format, ...) __attribute__((format(scanf, 3, 4)));
}
