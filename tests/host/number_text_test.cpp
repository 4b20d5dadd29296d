#include "host/number_text.h"

#include "host/text.h"

#include <gtest/gtest.h>

namespace brimwave {
namespace {

TEST(ParseFloat, ReadsTheHead) {
    const struct {
        const wchar_t* text;
        bool ok;
        float value;
    } rows[] = {
        {L"2.2", true, 2.2f}, {L" -1.5e-05 rest", true, -1.5e-5f},
        {L"+3", true, 3.0f},  {L"1e-005", true, 1e-5f},
        {L"", false, -1},     {L"abc", false, -1},
        {L"inf", false, -1},  {L"nan", false, -1},
        {L".5", true, 0.5f},  {L"1,5", true, 1.0f},
    };
    for (const auto& row : rows) {
        float value = -1;
        EXPECT_EQ(ParseFloat(row.text, value), row.ok) << WideToUtf8(row.text);
        EXPECT_EQ(value, row.value) << WideToUtf8(row.text);
    }
}

TEST(ParseInteger, ReadsTheHead) {
    constexpr std::int64_t most = INT64_MAX;
    const struct {
        const wchar_t* text;
        std::optional<std::int64_t> number;
    } rows[] = {
        {L"", {}},
        {L" \t\r\n\v\f 12", 12},
        {L"-0012.9", -12},
        {L"+5", 5},
        {L"--5", {}},
        {L"- 5", {}},
        {L"2147483648P", 2147483648},
        {L"9223372036854775807", most},
        {L"9223372036854775808", most},
        {L"-99999999999999999999999999", -most},
        {L"\xFF15", {}}, // a wide digit is none
    };
    for (const auto& row : rows)
        EXPECT_EQ(ParseInteger(row.text), row.number) << ::testing::PrintToString(row.text);
}

} // namespace
} // namespace brimwave
