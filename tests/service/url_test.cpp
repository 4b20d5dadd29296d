#include "service/url.h"

#include <gmock/gmock.h>

namespace brimwave {
namespace {

TEST(ParseUrl, SplitsAbsoluteUrls) {
    struct Case {
        std::wstring url, host, path;
        int port;
        bool secure;
    };
    const Case cases[] = {
        {L"https://h.example", L"h.example", L"/", 443, true},
        {L"http://h.example", L"h.example", L"/", 80, false},
        {L"http://h:8080/a/b?x=1", L"h", L"/a/b?x=1", 8080, false},
        {L"https://h:8443", L"h", L"/", 8443, true},
        // The scheme is compared as written and not checked otherwise.
        {L"HTTPS://h", L"h", L"/", 80, false},
        {L"ftp://h/x", L"h", L"/x", 80, false},
        {L"://h", L"h", L"/", 80, false},
        // Ports as the C library reads them, cut to 16 bits.
        {L"https://h:/x", L"h", L"/x", 0, true},
        {L"https://h:zz", L"h", L"/", 0, true},
        {L"https://h:12ab/x", L"h", L"/x", 12, true},
        {L"https://h: +7", L"h", L"/", 7, true},
        {L"https://h:65616", L"h", L"/", 80, true},
        {L"https://h:99999999999999999999", L"h", L"/", 0xFFFF, true},
        {L"https://h:2147483648", L"h", L"/", 0xFFFF, true},
        {L"https://h:-2147483650", L"h", L"/", 0, true},
        {L"https://h:1:2", L"h", L"/", 1, true},
        // Nothing, or only a path, behind the scheme.
        {L"http://", L"", L"/", 80, false},
        {L"http:///x", L"", L"/x", 80, false},
        {L"http://h?x=1", L"h?x=1", L"/", 80, false},
        {L"http://a/b://c:5/d", L"a", L"/b://c:5/d", 80, false},
    };
    for (const auto& c : cases) {
        ParsedUrl out;
        ASSERT_TRUE(ParseUrl(c.url, out)) << ::testing::PrintToString(c.url);
        EXPECT_EQ(out.host, c.host) << ::testing::PrintToString(c.url);
        EXPECT_EQ(out.path, c.path) << ::testing::PrintToString(c.url);
        EXPECT_EQ(out.port, c.port) << ::testing::PrintToString(c.url);
        EXPECT_EQ(out.secure, c.secure) << ::testing::PrintToString(c.url);
    }
}

TEST(ParseUrl, RefusesTextWithoutASchemeSeparator) {
    for (const wchar_t* url : {L"", L"ab", L"//", L"h.example/x", L"http:/h", L"http:h//x"}) {
        ParsedUrl out;
        EXPECT_FALSE(ParseUrl(url, out)) << ::testing::PrintToString(std::wstring(url));
        EXPECT_EQ(out.host, L"");
        EXPECT_EQ(out.port, 443);
        EXPECT_TRUE(out.secure);
    }
}

TEST(UrlEncode, EncodesTheUtf8Form) {
    const std::pair<std::wstring, std::wstring> cases[] = {
        {L"", L""},
        {L"Scene 1 (final)", L"Scene%201%20%28final%29"},
        {L"azAZ09-._~", L"azAZ09-._~"},
        {L"+/\\%\r\n", L"%2B%2F%5C%25%0D%0A"},
        {std::wstring(L"\0\x7F", 2), L"%00%7F"},
        {L"\x00E9", L"%C3%A9"},
        {L"\x00AA\x00BA", L"%C2%AA%C2%BA"}, // letters elsewhere, not in ASCII
        {L"\x0416\x20AC\xFFFF", L"%D0%96%E2%82%AC%EF%BF%BF"},
        {L"\xD83D\xDE00.", L"%F0%9F%98%80."},
        {L"\xDBFF\xDFFF", L"%F4%8F%BF%BF"},
        // Halves of a pair alone, at the end, and the wrong way round.
        {L"\xD83Dx", L"%EF%BF%BDx"},
        {L"\xD83D", L"%EF%BF%BD"},
        {L"\xDE00\xD83D", L"%EF%BF%BD%EF%BF%BD"},
    };
    for (const auto& [text, encoded] : cases)
        EXPECT_EQ(UrlEncode(text), encoded) << ::testing::PrintToString(text);
}

} // namespace
} // namespace brimwave
