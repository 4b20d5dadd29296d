#pragma once
#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace devservice {

/// The head of a request as it came over the wire.
struct RequestHead {
    std::string method;
    std::string target; ///< path and query
    bool secure = false;
    std::vector<std::string> headerLines; ///< in order, without line ends

    /// The value of the first header of this name (letter case does not matter); empty if none.
    [[nodiscard]] std::string Value(std::string_view name) const;
    /// The token of "Authorization: Bearer ..."; empty if there is none.
    [[nodiscard]] std::string BearerToken() const;
};

/// Takes `raw`, everything up to the empty line, apart. Nothing is checked: a broken request is
/// recorded as it is and refused elsewhere.
[[nodiscard]] RequestHead ParseRequestHead(std::string_view raw, bool secure);

/// What is recorded of a request: {"method", "path", "headers": {name: value, in order and
/// spelling as sent}, "header_lines": [each line as sent], "secure", "body_bytes"}.
[[nodiscard]] nlohmann::ordered_json DescribeRequest(const RequestHead& head,
                                                     std::size_t bodyBytes);

} // namespace devservice
