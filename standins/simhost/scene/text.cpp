#include "simhost/scene/text.h"

#include <algorithm>
#include <cwctype>

namespace simhost {

std::wstring Fold(std::wstring_view text) {
    std::wstring out(text);
    std::transform(out.begin(), out.end(), out.begin(), [](wchar_t unit) {
        return static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(unit)));
    });
    return out;
}

} // namespace simhost
