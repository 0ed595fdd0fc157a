#pragma once
// The platform's own type names, as far as the library's interfaces use them.
#include <cstddef>
#include <cstdint>

using __int64 = long long;
using ULONGLONG = unsigned long long;
using INT_PTR = __int64;
using UINT = unsigned int;
using BYTE = unsigned char;
using BOOL = int;

#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
