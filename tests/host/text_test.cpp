#include "host/script.h"
#include "host/text.h"

#include <gtest/gtest.h>

namespace brimwave {
namespace {

TEST(WideToUtf8, ConvertsUnits) {
    const struct {
        std::wstring wide;
        std::string utf8;
    } rows[] = {
        {L"", ""},
        {L"plain", "plain"},
        {L"\x00e9\x20ac", "\xc3\xa9\xe2\x82\xac"},
        {L"\xd83d\xde00", "\xf0\x9f\x98\x80"},
        {std::wstring(L"a\0b", 3), std::string("a\0b", 3)},
        // Halves of pairs become the replacement character and leave what is around them.
        {L"a\xd83d", "a\xef\xbf\xbd"},
        {L"\xde00z", "\xef\xbf\xbdz"},
        {L"\xde00\xd83d", "\xef\xbf\xbd\xef\xbf\xbd"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(WideToUtf8(row.wide), row.utf8);
}

TEST(WideToUtf8, CutsNoPairBetweenPieces) {
    for (const size_t before : {maxUtf8Piece - 2, maxUtf8Piece - 1, maxUtf8Piece}) {
        const std::wstring wide = std::wstring(before, L'x') + L"\xd83d\xde00" + L"end";
        EXPECT_EQ(WideToUtf8(wide), std::string(before, 'x') + "\xf0\x9f\x98\x80" + "end");
    }
}

} // namespace
} // namespace brimwave
