#include "simhost/classes/fold.h"

#include <algorithm>
#include <cwctype>

namespace simhost {

namespace {

wchar_t FoldUnit(wchar_t unit) {
    return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(unit)));
}

} // namespace

bool EqualFolded(std::wstring_view a, std::wstring_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return FoldUnit(x) == FoldUnit(y); });
}

} // namespace simhost
