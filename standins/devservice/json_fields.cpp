#include "devservice/json_fields.h"

#include <limits>
#include <set>

namespace devservice {
namespace {

using nlohmann::json;

void RequireObject(const json& value, const std::string& what) {
    if (!value.is_object())
        throw JsonFieldError(what + " must be an object");
}

// A misspelt member would be a fault that silently never happens.
void RefuseUnknown(const json& object, const std::set<std::string>& known) {
    for (const auto& [key, value] : object.items())
        if (!known.contains(key))
            throw JsonFieldError("unknown member \"" + key + "\"");
}

std::string Text(const json& object, const char* key, std::string fallback = {}) {
    const auto found = object.find(key);
    if (found == object.end())
        return fallback;
    if (!found->is_string())
        throw JsonFieldError(std::string("\"") + key + "\" must be a text");
    return found->get<std::string>();
}

std::optional<std::int64_t> Number(const json& object, const char* key, std::int64_t least,
                                   std::int64_t most) {
    const auto found = object.find(key);
    if (found == object.end())
        return std::nullopt;
    if (!found->is_number_integer() || *found < least || *found > most)
        throw JsonFieldError(std::string("\"") + key + "\" must be an integer from " +
                             std::to_string(least) + " to " + std::to_string(most));
    return found->get<std::int64_t>();
}

std::string BytesFromHex(const std::string& hex) {
    const auto digit = [](char c) {
        const auto at = std::string_view("0123456789abcdef")
                            .find(static_cast<char>(c >= 'A' && c <= 'F' ? c - 'A' + 'a' : c));
        if (at == std::string_view::npos)
            throw JsonFieldError("\"body_hex\" must hold pairs of hexadecimal digits");
        return at;
    };
    if (hex.size() % 2 != 0)
        throw JsonFieldError("\"body_hex\" must hold pairs of hexadecimal digits");
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2)
        bytes += static_cast<char>(digit(hex[i]) << 4 | digit(hex[i + 1]));
    return bytes;
}

Fault::On OnFromText(const std::string& text) {
    if (text == "any")
        return Fault::On::Any;
    if (text == "balance")
        return Fault::On::Balance;
    if (text == "jobs")
        return Fault::On::Jobs;
    throw JsonFieldError("\"on\" must be any, balance or jobs");
}

Fault::Close CloseFromText(const std::string& text) {
    if (text.empty())
        return Fault::Close::No;
    if (text == "before-header")
        return Fault::Close::BeforeHeader;
    if (text == "in-header")
        return Fault::Close::InHeader;
    if (text == "in-body")
        return Fault::Close::InBody;
    throw JsonFieldError("\"close\" must be before-header, in-header or in-body");
}

constexpr std::int64_t int32Min = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t int32Max = std::numeric_limits<std::int32_t>::max();

} // namespace

json OptionalArray(const json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end())
        return json::array();
    if (!found->is_array())
        throw JsonFieldError(std::string("\"") + key + "\" must be an array");
    return *found;
}

Account AccountFromJson(const json& object) {
    RequireObject(object, "an account");
    RefuseUnknown(object, {"token", "name", "balance", "daily_limit", "faults"});
    Account account;
    account.token = Text(object, "token");
    if (account.token.empty())
        throw JsonFieldError("an account needs a \"token\"");
    account.name = Text(object, "name", "unnamed");
    account.balance =
        static_cast<std::int32_t>(Number(object, "balance", int32Min, int32Max).value_or(0));
    if (const auto limit = Number(object, "daily_limit", 0, int32Max))
        account.dailyLimit = static_cast<std::int32_t>(*limit);
    return account;
}

Fault FaultFromJson(const json& object) {
    RequireObject(object, "a fault");
    RefuseUnknown(object, {"on", "times", "status", "body", "body_hex", "body_size", "redirect",
                           "raw", "close", "reset", "delay_ms", "piece_bytes", "pause_ms",
                           "read_bytes_per_second"});
    Fault fault;
    fault.on = OnFromText(Text(object, "on", "any"));
    fault.redirect = Text(object, "redirect");
    fault.raw = Text(object, "raw");
    fault.raw = Text(object, "raw");
    fault.close = CloseFromText(Text(object, "close"));
    if (const auto status = Number(object, "status", 100, 999))
        fault.status = static_cast<int>(*status);
    if (object.contains("body"))
        fault.body = Text(object, "body");
    if (object.contains("body_hex"))
        fault.body = BytesFromHex(Text(object, "body_hex"));
    if (const auto reset = object.find("reset"); reset != object.end())
        fault.reset = *reset == true;

    const auto size = [&](const char* key) {
        return static_cast<std::size_t>(Number(object, key, 0, std::int64_t{1} << 32).value_or(0));
    };
    const auto milliseconds = [&](const char* key) {
        return std::chrono::milliseconds(Number(object, key, 0, 600'000).value_or(0));
    };
    fault.bodySize = size("body_size");
    fault.pieceBytes = size("piece_bytes");
    fault.readBytesPerSecond = size("read_bytes_per_second");
    fault.delay = milliseconds("delay_ms");
    fault.pause = milliseconds("pause_ms");
    if (const auto times = Number(object, "times", 1, int32Max))
        fault.times = static_cast<int>(*times);
    return fault;
}

} // namespace devservice
