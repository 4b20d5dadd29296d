#include "devservice/json_fields.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <set>

namespace devservice {
namespace {

using nlohmann::json;

[[noreturn]] void Refuse(const std::string& key, const std::string& what) {
    throw JsonFieldError("\"" + key + "\" must " + what);
}

// A misspelt member would be a fault that silently never happens.
void RequireObject(const json& value, const char* what, const std::set<std::string>& known) {
    if (!value.is_object())
        throw JsonFieldError(std::string(what) + " must be an object");
    for (const auto& [key, member] : value.items()) {
        if (!known.contains(key))
            throw JsonFieldError("unknown member \"" + key + "\"");
    }
}

std::string ReadText(const json& object, const char* key, std::string fallback = {}) {
    const auto found = object.find(key);
    if (found == object.end())
        return fallback;
    if (!found->is_string())
        Refuse(key, "be a text");
    return found->get<std::string>();
}

constexpr std::int64_t int32Min = std::numeric_limits<std::int32_t>::min();
constexpr std::int64_t int32Max = std::numeric_limits<std::int32_t>::max();

template <typename T = std::int32_t>
std::optional<T> FindNumber(const json& object, const char* key, std::int64_t least,
                            std::int64_t most = int32Max) {
    const auto found = object.find(key);
    if (found == object.end())
        return std::nullopt;
    if (!found->is_number_integer() || *found < least || *found > most)
        Refuse(key, "be an integer from " + std::to_string(least) + " to " + std::to_string(most));
    return found->get<T>();
}

std::string BytesFromHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        const char* digits = hex.data() + i;
        const char* end = hex.data() + std::min(i + 2, hex.size());
        unsigned char byte = 0;
        if (std::from_chars(digits, end, byte, 16).ptr != digits + 2)
            Refuse("body_hex", "hold pairs of hexadecimal digits");
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

// The value behind the word that the member holds; behind the first if there is no member.
template <typename T>
T ReadChoice(const json& object, const char* key, const char* words,
             std::initializer_list<std::pair<const char*, T>> choices) {
    const std::string text = ReadText(object, key, choices.begin()->first);
    for (const auto& [word, value] : choices) {
        if (text == word)
            return value;
    }
    Refuse(key, std::string("be ") + words);
}

} // namespace

json OptionalArray(const json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end())
        return json::array();
    if (!found->is_array())
        Refuse(key, "be an array");
    return *found;
}

Account AccountFromJson(const json& object) {
    RequireObject(object, "an account", {"token", "name", "balance", "daily_limit", "faults"});
    Account account;
    account.token = ReadText(object, "token");
    if (account.token.empty())
        throw JsonFieldError("an account needs a \"token\"");
    account.name = ReadText(object, "name", "unnamed");
    account.balance = FindNumber(object, "balance", int32Min).value_or(0);
    account.dailyLimit = FindNumber(object, "daily_limit", 0);
    return account;
}

Fault FaultFromJson(const json& object) {
    RequireObject(object, "a fault",
                  {"on", "times", "status", "body", "body_hex", "body_size", "redirect", "raw",
                   "close", "reset", "delay_ms", "piece_bytes", "pause_ms",
                   "read_bytes_per_second"});
    using On = Fault::On;
    using Close = Fault::Close;
    Fault fault;
    fault.on = ReadChoice<On>(object, "on", "any, balance or jobs",
                              {{"any", On::Any}, {"balance", On::Balance}, {"jobs", On::Jobs}});
    fault.redirect = ReadText(object, "redirect");
    fault.raw = ReadText(object, "raw");
    fault.close = ReadChoice<Close>(object, "close", "before-header, in-header or in-body",
                                    {{"", Close::No},
                                     {"before-header", Close::BeforeHeader},
                                     {"in-header", Close::InHeader},
                                     {"in-body", Close::InBody}});
    fault.status = FindNumber(object, "status", 100, 999);
    if (object.contains("body"))
        fault.body = ReadText(object, "body");
    if (object.contains("body_hex"))
        fault.body = BytesFromHex(ReadText(object, "body_hex"));
    if (const auto reset = object.find("reset"); reset != object.end())
        fault.reset = *reset == true;

    const auto size = [&](const char* key) {
        return FindNumber<std::size_t>(object, key, 0, std::int64_t{1} << 32).value_or(0);
    };
    const auto milliseconds = [&](const char* key) {
        return std::chrono::milliseconds(FindNumber(object, key, 0, 600'000).value_or(0));
    };
    fault.bodySize = size("body_size");
    fault.pieceBytes = size("piece_bytes");
    fault.readBytesPerSecond = size("read_bytes_per_second");
    fault.delay = milliseconds("delay_ms");
    fault.pause = milliseconds("pause_ms");
    fault.times = FindNumber(object, "times", 1);
    return fault;
}

} // namespace devservice
