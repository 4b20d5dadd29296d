// GDI+'s headers need parts of <windows.h> that lean builds leave out, and `min` and `max`
// without the macros of those names.
#pragma once
#include <windows.h>

#include <objidl.h>

#include <algorithm>

namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus

#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wshadow"
#pragma GCC diagnostic ignored "-Wconversion"
#pragma GCC diagnostic ignored "-Woverloaded-virtual"
#endif
#include <gdiplus.h>
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
