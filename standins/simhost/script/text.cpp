#include "simhost/script/text.h"

#include <algorithm>
#include <cstdint>

namespace simhost::script {
namespace {

struct CaseRange {
    wchar_t first; // upper-case letters first..last
    wchar_t last;
    int offset; // to the lower-case letter; 0: upper and lower alternate, starting at first
};

constexpr CaseRange caseRanges[] = {
    {L'A', L'Z', 32},     {0x00C0, 0x00D6, 32}, {0x00D8, 0x00DE, 32}, {0x0100, 0x012F, 0},
    {0x0132, 0x0137, 0},  {0x0139, 0x0148, 0},  {0x014A, 0x0177, 0},  {0x0179, 0x017E, 0},
    {0x0386, 0x0386, 38}, {0x0388, 0x038A, 37}, {0x038C, 0x038C, 64}, {0x038E, 0x038F, 63},
    {0x0391, 0x03A1, 32}, {0x03A3, 0x03AB, 32}, {0x0400, 0x040F, 80}, {0x0410, 0x042F, 32},
    {0x0460, 0x0481, 0},  {0x048A, 0x04BF, 0},  {0x04C1, 0x04CE, 0},  {0x04D0, 0x052F, 0},
    {0x0531, 0x0556, 48}, {0x1E00, 0x1E95, 0},  {0x1EA0, 0x1EFF, 0},  {0xFF21, 0xFF3A, 32},
};

struct UnitRange {
    wchar_t first;
    wchar_t last;
};

// Units above ASCII that no identifier may hold: controls, punctuation, symbols, private marks.
constexpr UnitRange notLetters[] = {
    {0x0080, 0x00A9}, {0x00AB, 0x00B4}, {0x00B6, 0x00B9}, {0x00BB, 0x00BF}, {0x00D7, 0x00D7},
    {0x00F7, 0x00F7}, {0x02C2, 0x02DF}, {0x2000, 0x206F}, {0x20A0, 0x20CF}, {0x2190, 0x2BFF},
    {0x2E00, 0x2E7F}, {0x3000, 0x3004}, {0x3008, 0x3020}, {0xFE10, 0xFE6F}, {0xFEFF, 0xFF0F},
    {0xFF1A, 0xFF20}, {0xFF3B, 0xFF40}, {0xFF5B, 0xFF65}, {0xFFE0, 0xFFFF},
};

} // namespace

wchar_t LowerUnit(wchar_t unit) {
    for (const CaseRange& range : caseRanges) {
        if (unit < range.first || unit > range.last)
            continue;
        if (range.offset != 0)
            return static_cast<wchar_t>(unit + range.offset);
        return (unit - range.first) % 2 == 0 ? static_cast<wchar_t>(unit + 1) : unit;
    }
    return unit;
}

wchar_t UpperUnit(wchar_t unit) {
    for (const CaseRange& range : caseRanges) {
        if (range.offset != 0) {
            const auto upper = static_cast<wchar_t>(unit - range.offset);
            if (unit >= range.offset && upper >= range.first && upper <= range.last)
                return upper;
        } else if (unit >= range.first && unit <= range.last) {
            return (unit - range.first) % 2 == 1 ? static_cast<wchar_t>(unit - 1) : unit;
        }
    }
    return unit;
}

std::wstring Lower(std::wstring_view text) {
    std::wstring lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), LowerUnit);
    return lower;
}

std::wstring Upper(std::wstring_view text) {
    std::wstring upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperUnit);
    return upper;
}

bool EqualNoCase(std::wstring_view a, std::wstring_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](wchar_t x, wchar_t y) { return x == y || LowerUnit(x) == LowerUnit(y); });
}

bool MatchesWildcards(std::wstring_view text, std::wstring_view pattern) {
    size_t t = 0;
    size_t p = 0;
    size_t star = std::wstring_view::npos; // the last `*`, which may still take more
    size_t starText = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            star = p++;
            starText = t;
        } else if (p < pattern.size() && (pattern[p] == L'?' || pattern[p] == text[t])) {
            ++t;
            ++p;
        } else if (star != std::wstring_view::npos) {
            p = star + 1;
            t = ++starText;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(L'*', p) == std::wstring_view::npos;
}

bool IsBlank(wchar_t unit) {
    if (unit <= 0x20)
        return unit != L'\n' && unit != L'\r';
    return unit == 0x00A0 || unit == 0x3000 || unit == 0xFEFF || (unit >= 0x2000 && unit <= 0x200B);
}

bool IsDigit(wchar_t unit) {
    return unit >= L'0' && unit <= L'9';
}

bool IsLetter(wchar_t unit) {
    if (unit < 0x80)
        return (unit >= L'a' && unit <= L'z') || (unit >= L'A' && unit <= L'Z') || unit == L'_';
    return std::none_of(std::begin(notLetters), std::end(notLetters),
                        [unit](const UnitRange& r) { return unit >= r.first && unit <= r.last; });
}

bool IsWordUnit(wchar_t unit) {
    return IsLetter(unit) || IsDigit(unit);
}

int HexDigit(wchar_t unit) {
    if (IsDigit(unit))
        return static_cast<int>(unit - L'0');
    const wchar_t lower = LowerUnit(unit);
    return lower >= L'a' && lower <= L'f' ? static_cast<int>(lower - L'a') + 10 : -1;
}

} // namespace simhost::script
