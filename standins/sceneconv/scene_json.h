// Small pieces of scene file text: numbers, lists and ids.
#pragma once

#include "sceneconv/matrix.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace sceneconv {

using Json = nlohmann::ordered_json;

/// The number in nine digits or fewer, without the noise of float arithmetic; 0 for what is not
/// finite.
[[nodiscard]] double Tidy(double value);
[[nodiscard]] Json VectorJson(const Vector& v);
[[nodiscard]] Json ColorJson(double r, double g, double b);
/// `{"matrix": rows}`.
[[nodiscard]] Json TransformJson(const Matrix& m);

/// Flat numbers when the list is short, base64 otherwise.
[[nodiscard]] Json ListJson(const std::vector<float>& values);
[[nodiscard]] Json ListJson(const std::vector<std::uint32_t>& values);

/// The text as it is when it is UTF-8; otherwise its bytes taken as Latin-1.
[[nodiscard]] std::string ToUtf8(std::string_view text);

[[nodiscard]] bool IsControl(char c);
/// The name with a `_` for every character that the host's file system refuses.
[[nodiscard]] std::string PortableFileName(std::string name);

/// Hands out ids of one dictionary: the wanted text, with a number behind it when it is taken.
class Ids {
  public:
    [[nodiscard]] std::string Next(std::string_view wanted);

  private:
    std::set<std::string, std::less<>> taken_;
    std::map<std::string, int, std::less<>> numbers_;
};

} // namespace sceneconv
