#include "host/json_text.h"

#include <max.h>

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <locale>
#include <random>
#include <sstream>

namespace brimwave {
namespace {

/// The rule that number texts follow, by the library that defines it.
std::wstring StreamText(float value) {
    std::wostringstream stream;
    stream.imbue(std::locale::classic());
    stream.precision(6);
    stream << value;
    return stream.str();
}

TEST(FormatJsonFloat, KnownTexts) {
    const struct {
        float value;
        const wchar_t* text;
    } rows[] = {
        {0.5f, L"0.5"},          {1.0f, L"1"},
        {0.1f, L"0.1"},          {1234567.0f, L"1.23457e+06"},
        {0.00001f, L"1e-05"},    {0.0001f, L"0.0001"},
        {-0.0f, L"-0"},          {0.0f, L"0"},
        {100000.0f, L"100000"},  {999999.5f, L"1e+06"},
        {999999.0f, L"999999"},  {-2.25f, L"-2.25"},
        {1e-20f, L"1e-20"},      {std::numeric_limits<float>::max(), L"3.40282e+38"},
        {1e-45f, L"1.4013e-45"}, {16777216.0f, L"1.67772e+07"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(FormatJsonFloat(row.value), row.text) << row.value;
}

TEST(FormatJsonFloat, NoNumberIsNull) {
    EXPECT_EQ(FormatJsonFloat(std::numeric_limits<float>::quiet_NaN()), L"null");
    EXPECT_EQ(FormatJsonFloat(std::numeric_limits<float>::infinity()), L"null");
    EXPECT_EQ(FormatJsonFloat(-std::numeric_limits<float>::infinity()), L"null");
    EXPECT_EQ(FormatJsonColor(1, std::nanf(""), 0.5f), L"[1,null,0.5]");
}

TEST(FormatJsonFloat, SameAsStream) {
    std::mt19937 random(20240611);
    for (int i = 0; i < 100000; ++i) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (!std::isfinite(value))
            continue;
        ASSERT_EQ(FormatJsonFloat(value), StreamText(value)) << value;
    }
    // Values as scenes hold them, and ties between two six-digit texts.
    std::uniform_real_distribution<float> common(-2000.0f, 2000.0f);
    for (int i = 0; i < 100000; ++i) {
        const float value = common(random);
        ASSERT_EQ(FormatJsonFloat(value), StreamText(value)) << value;
        const float tie = std::round(value * 1024.0f) / 1024.0f;
        ASSERT_EQ(FormatJsonFloat(tie), StreamText(tie)) << tie;
    }
}

TEST(FormatJson, Aggregates) {
    EXPECT_EQ(FormatJsonColor(1, 0.5f, 0), L"[1,0.5,0]");
    EXPECT_EQ(FormatJsonPoint3(-1, 2.5f, 1e6f), L"[-1,2.5,1e+06]");
    EXPECT_EQ(FormatJsonQuat(Quat(0.1f, 0.2f, 0.3f, 0.4f)), L"[0.4,0.1,0.2,0.3]");
    EXPECT_EQ(BoolToJson(true), L"true");
    EXPECT_EQ(BoolToJson(false), L"false");
}

TEST(EscapeJsonString, EscapesWhatJsonNeeds) {
    const struct {
        std::wstring text, escaped;
    } rows[] = {
        {L"", L""},
        {L"a\"b\\c\td\x01", L"a\\\"b\\\\c\\td\\u0001"},
        {L"\r\n\b\f\x1f", L"\\r\\n\\u0008\\u000c\\u001f"},
        {L"C:\\maps\\wood.png", L"C:\\\\maps\\\\wood.png"},
        {L"a/b \x7f \x00e9 \xd83d\xde00 \xd800", L"a/b \x7f \x00e9 \xd83d\xde00 \xd800"},
        {std::wstring(L"a\0b", 3), L"a\\u0000b"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(EscapeJsonString(row.text), row.escaped);
}

TEST(JsonMembers, KeepsTextsAndJoins) {
    JsonMembers members;
    EXPECT_EQ(JoinJsonMembers(members, L"  "), L"");
    members.Add(L"a");
    EXPECT_EQ(JoinJsonMembers(members, L"  "), L"  a");
    members.AddFloat(L"f", 0.5f);
    members.AddInt(L"i", -7);
    members.AddBool(L"b", true);
    members.AddString(L"s", L"q\"");
    members.AddRaw(L"c", FormatJsonColor(1, 0.5f, 0));
    members.AddRaw(L"raw", L"[]");
    ASSERT_EQ(members.Count(), 7u);
    EXPECT_EQ(members[2], L"\"i\":-7");
    EXPECT_EQ(JoinJsonMembers(members, L""), L"a,\n\"f\":0.5,\n\"i\":-7,\n\"b\":true,\n"
                                             L"\"s\":\"q\\\"\",\n\"c\":[1,0.5,0],\n\"raw\":[]");
    members.clear();
    EXPECT_TRUE(members.empty());
}

} // namespace
} // namespace brimwave
