#include "devservice/request_head.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace devservice {
namespace {

std::pair<std::string, std::string> SplitHeader(std::string_view line) {
    const auto colon = line.find(':');
    if (colon == std::string_view::npos)
        return {std::string(line), {}};
    auto value = line.substr(colon + 1);
    value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
    return {std::string(line.substr(0, colon)), std::string(value)};
}

constexpr char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

} // namespace

std::string RequestHead::Value(std::string_view name) const {
    for (const auto& line : headerLines) {
        auto [key, value] = SplitHeader(line);
        if (std::ranges::equal(key, name, {}, Lower, Lower))
            return std::move(value);
    }
    return {};
}

std::string RequestHead::BearerToken() const {
    constexpr std::string_view scheme = "Bearer ";
    std::string value = Value("Authorization");
    return value.starts_with(scheme) ? value.substr(scheme.size()) : std::string();
}

RequestHead ParseRequestHead(std::string_view raw, bool secure) {
    RequestHead head{.method = {}, .target = {}, .secure = secure, .headerLines = {}};
    for (bool first = true; !raw.empty(); first = false) {
        const auto end = std::min(raw.find('\n'), raw.size());
        auto line = raw.substr(0, end);
        raw.remove_prefix(std::min(end + 1, raw.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (first) {
            const auto blank = std::min(line.find(' '), line.size());
            head.method = line.substr(0, blank);
            const auto rest = line.substr(std::min(blank + 1, line.size()));
            head.target = rest.substr(0, rest.rfind(' '));
        } else if (!line.empty()) {
            head.headerLines.emplace_back(line);
        }
    }
    return head;
}

nlohmann::ordered_json DescribeRequest(const RequestHead& head, std::size_t bodyBytes) {
    auto headers = nlohmann::ordered_json::object();
    for (const auto& line : head.headerLines) {
        auto [name, value] = SplitHeader(line);
        auto& member = headers[name];
        // A repeated header is joined as a server may do; header_lines keeps both.
        member = member.is_null() ? value : member.get<std::string>() + ", " + value;
    }
    return {{"method", head.method},         {"path", head.target},
            {"headers", std::move(headers)}, {"header_lines", head.headerLines},
            {"secure", head.secure},         {"body_bytes", bodyBytes}};
}

} // namespace devservice
