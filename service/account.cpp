#include "service/account.h"

#include "host/number_text.h"
#include "service/http.h"

#include <algorithm>
#include <limits>

namespace brimwave {
namespace {

bool Contains(std::wstring_view text, std::wstring_view part) {
    return text.find(part) != std::wstring_view::npos;
}

void SkipBlanks(std::wstring_view& text) {
    const auto next = text.find_first_not_of(L" \t");
    text.remove_prefix(next == std::wstring_view::npos ? text.size() : next);
}

} // namespace

BalanceResult FetchBalance(std::wstring_view baseAddress, std::wstring_view token) {
    BalanceResult result;
    if (token.empty()) {
        result.error = L"token_empty";
        return result;
    }
    HttpResult answer = HttpGet(std::wstring(baseAddress).append(L"/api/balance"), token);
    if (Contains(answer.text, L"invalid token") || Contains(answer.text, L"missing or invalid")) {
        result.error = L"invalid_token";
    } else if (!answer.ok) {
        result.error = answer.text.empty() ? L"http_" + std::to_wstring(answer.status)
                                           : std::move(answer.text);
    } else {
        result.ok = true;
        // A number that cannot be read keeps its default; the others are read all the same.
        (void)ExtractJsonInt(answer.text, L"balance", result.balance);
        (void)ExtractJsonInt(answer.text, L"daily_limit", result.daily_limit);
        (void)ExtractJsonInt(answer.text, L"conversions_left", result.conversions_left);
    }
    return result;
}

bool ExtractJsonInt(std::wstring_view text, std::wstring_view key, std::int32_t& value) {
    const std::wstring needle = L'"' + std::wstring(key) + L'"';
    const auto found = text.find(needle);
    if (found == std::wstring_view::npos)
        return false;
    text.remove_prefix(found + needle.size());
    SkipBlanks(text);
    if (!text.starts_with(L':'))
        return false;
    text.remove_prefix(1);
    SkipBlanks(text);
    if (text.find_first_of(L"+-0123456789") != 0) // a line break is no blank here
        return false;
    const auto number = ParseInteger(text);
    if (!number)
        return false;
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    value = static_cast<std::int32_t>(std::clamp(*number, -most, most));
    return true;
}

std::wstring FormatDailyLimitText(const BalanceResult& result) {
    if (result.daily_limit == 0)
        return L"Unlimited conversions";
    if (result.daily_limit < 0 || result.conversions_left < 0)
        return {};
    const std::wstring limit = std::to_wstring(result.daily_limit);
    if (result.conversions_left == 0)
        return L"Daily limit reached (" + limit + L"/day)";
    return std::to_wstring(result.conversions_left) + L" of " + limit + L" conversions left today";
}

std::wstring FormatBalanceText(const BalanceResult& result) {
    std::wstring text = std::to_wstring(result.balance);
    text += result.balance == 1 ? L" credit" : L" credits";
    if (const std::wstring daily = FormatDailyLimitText(result); !daily.empty())
        text += L" - " + daily;
    return text;
}

} // namespace brimwave
