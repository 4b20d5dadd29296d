#include "sceneconv/scene_json.h"

#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace sceneconv {

namespace {

// Longer lists are written packed: text would be several times as long and slow to read.
constexpr std::size_t longestPlainList = 240;

std::string Base64(const void* data, std::size_t size) {
    static constexpr char letters[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    const auto* bytes = static_cast<const unsigned char*>(data);
    std::string text;
    text.reserve((size + 2) / 3 * 4);
    for (std::size_t i = 0; i < size; i += 3) {
        const std::size_t left = size - i;
        const unsigned group = static_cast<unsigned>(bytes[i]) << 16 |
                               (left > 1 ? static_cast<unsigned>(bytes[i + 1]) << 8 : 0U) |
                               (left > 2 ? static_cast<unsigned>(bytes[i + 2]) : 0U);
        text += letters[group >> 18];
        text += letters[group >> 12 & 63U];
        text += left > 1 ? letters[group >> 6 & 63U] : '=';
        text += left > 2 ? letters[group & 63U] : '=';
    }
    return text;
}

template <typename T>
Json PackedList(const std::vector<T>& values) {
    static_assert(std::endian::native == std::endian::little && sizeof(T) == 4);
    return {{"base64", Base64(values.data(), values.size() * sizeof(T))}};
}

} // namespace

double Tidy(double value) {
    if (!std::isfinite(value) || std::abs(value) < 1e-12)
        return 0; // also no minus zero
    std::array<char, 40> text{};
    const auto asFloat = static_cast<float>(value);
    if (static_cast<double>(asFloat) == value) {
        // A single-precision number: its own shortest text, 0.3 rather than 0.300000012.
        std::to_chars(text.data(), text.data() + text.size() - 1, asFloat);
    } else {
        std::snprintf(text.data(), text.size(), "%.9g", value);
    }
    return std::strtod(text.data(), nullptr);
}

Json VectorJson(const Vector& v) {
    return {Tidy(v.x), Tidy(v.y), Tidy(v.z)};
}

Json ColorJson(double r, double g, double b) {
    return VectorJson({r, g, b});
}

Json TransformJson(const Matrix& m) {
    return {{"matrix",
             {VectorJson({m.a1, m.b1, m.c1}), VectorJson({m.a2, m.b2, m.c2}),
              VectorJson({m.a3, m.b3, m.c3}), VectorJson({m.a4, m.b4, m.c4})}}};
}

Json ListJson(const std::vector<float>& values) {
    if (values.size() > longestPlainList)
        return PackedList(values);
    Json list = Json::array();
    for (const float value : values)
        list.push_back(Tidy(value));
    return list;
}

Json ListJson(const std::vector<std::uint32_t>& values) {
    return values.size() > longestPlainList ? PackedList(values) : Json(values);
}

std::string ToUtf8(std::string_view text) {
    if (utf8::IsValid(text))
        return std::string(text);
    std::wstring wide;
    for (const char c : text)
        wide += static_cast<wchar_t>(static_cast<unsigned char>(c));
    return utf8::FromWide(wide);
}

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < ' ';
}

std::string PortableFileName(std::string name) {
    const auto refused = [](char c) {
        return IsControl(c) || std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos;
    };
    std::replace_if(name.begin(), name.end(), refused, '_');
    return name;
}

std::string Ids::Next(std::string_view wanted) {
    std::string id(wanted);
    while (id.empty() || !taken_.insert(id).second)
        id = std::string(wanted) + "#" + std::to_string(++numbers_[std::string(wanted)] + 1);
    return id;
}

} // namespace sceneconv
