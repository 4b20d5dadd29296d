#include "host/script.h"
#include "host/script_reply.h"

#include <gtest/gtest.h>

namespace brimwave {
namespace {

TEST(FillScript, NoNameEndsTheString) {
    const auto quoted = [](std::wstring_view name) {
        return FillScript("\"{{name}}\"", {{"name", name}});
    };
    EXPECT_EQ(quoted(L"a\"); quitMax(); (\""), L"\"a\\\"); quitMax(); (\\\"\"");
    EXPECT_EQ(quoted(L"C:\\temp\\"), L"\"C:\\\\temp\\\\\"");
    EXPECT_EQ(quoted(L"a\r\nb"), L"\"a\\r\\nb\"");
}

TEST(FillScript, PlacesEachTextOnceAndEscapesItBehindAQuote) {
    constexpr std::string_view script = "(find \"{{name}}\" {{handle}}P; {{body}}{{none}})";
    EXPECT_EQ(
        FillScript(script, {{"name", L"a\" {{body}}"}, {"handle", L"17"}, {"body", L"\"x\""}}),
        L"(find \"a\\\" {{body}}\" 17P; \"x\")");
    EXPECT_EQ(FillScript("#(1, {2})"), L"#(1, {2})");
}

TEST(ScriptReply, IsTakenApart) {
    std::wstring_view rest = L"a||b";
    EXPECT_EQ(TakeField(rest), L"a");
    EXPECT_EQ(TakeField(rest), L"");
    EXPECT_EQ(TakeField(rest), L"b");
    EXPECT_EQ(TakeField(rest), L"");
    EXPECT_EQ(AfterWord(L"BAKED:3", L"BAKED:"), L"3");
    EXPECT_EQ(AfterWord(L"BAKE", L"BAKED:"), std::nullopt);
}

TEST(ScriptReply, ReadsTheIntegerAtTheHead) {
    const struct {
        const wchar_t* text;
        std::optional<std::int32_t> number;
    } rows[] = {
        {L"0", 0},
        {L"12", 12},
        {L"12P", 12},
        {L" \t+7 spare", 7},
        {L"-3", -3},
        {L"2147483647", 2147483647},
        {L"-2147483648", -2147483647 - 1},
        {L"2147483648", {}},
        {L"-2147483649", {}},
        {L"99999999999999999999999999", {}},
        {L"", {}},
        {L"  ", {}},
        {L"-", {}},
        {L"x1", {}},
        {L"- 1", {}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(LeadingInteger(row.text), row.number) << ::testing::PrintToString(row.text);
}

} // namespace
} // namespace brimwave
