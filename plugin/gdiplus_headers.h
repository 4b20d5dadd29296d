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

#include <gdiplus.h>
