#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace brimwave {

/// The account behind a token, as the service tells it. The numbers mean something only when ok.
struct BalanceResult {
    bool ok = false;
    std::int32_t balance = 0;
    std::int32_t daily_limit = -1;      ///< conversions a day; 0 unlimited, negative not reported
    std::int32_t conversions_left = -1; ///< left today; negative not reported
    /// Why it is not ok: "token_empty", "invalid_token", the answer's text, or "http_" + status.
    std::wstring error;

    /// The token itself is at fault, not the way to the service.
    [[nodiscard]] bool IsTokenRefused() const {
        return error == L"invalid_token" || error == L"token_empty";
    }
};

/// Checks the token and reads its account with one GET of `baseAddress` + "/api/balance"; an empty
/// token makes no request. Blocks. A 2xx answer whose numbers cannot be read is ok, with defaults.
[[nodiscard]] BalanceResult FetchBalance(std::wstring_view baseAddress, std::wstring_view token);

/// Reads the integer behind the first `"key":` in `text`, without parsing the rest. False when the
/// key is missing or something other than a number follows its first occurrence (a line break
/// after the colon included). Fractions and exponents are cut off.
[[nodiscard]] bool ExtractJsonInt(std::wstring_view text, std::wstring_view key,
                                  std::int32_t& value);

/// The daily allowance in words; empty when the service did not report it. Does not look at ok.
[[nodiscard]] std::wstring FormatDailyLimitText(const BalanceResult& result);

/// The one line of the panel's balance label: "42 credits", followed by " - " and the daily
/// allowance when there is one. What matters comes first, as a narrow label cuts the end off.
[[nodiscard]] std::wstring FormatBalanceText(const BalanceResult& result);

} // namespace brimwave
