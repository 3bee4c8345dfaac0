#pragma once

#include <stddef.h>

extern "C" int sysctlbyname(const char* name, void* value, size_t* size, void* newValue, size_t newSize);
