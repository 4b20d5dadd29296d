#pragma once
// JSON text, built by appending to wide strings.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class Quat;

namespace brimwave {

/// Six significant digits in general notation with a point as decimal mark, as a stream in the
/// classic locale writes them; "null" for NaN and the infinities.
[[nodiscard]] std::wstring FormatJsonFloat(float value);
/// `[r,g,b]`, each as FormatJsonFloat.
[[nodiscard]] std::wstring FormatJsonColor(float r, float g, float b);
/// `[x,y,z]`.
[[nodiscard]] std::wstring FormatJsonPoint3(float x, float y, float z);
/// `[w,x,y,z]`: the scalar part first, although the host keeps it last.
[[nodiscard]] std::wstring FormatJsonQuat(const Quat& rotation);
/// The text with JSON's escapes, without the quotes around it. Only quotes, backslashes and
/// units below 32 are escaped.
[[nodiscard]] std::wstring EscapeJsonString(std::wstring_view text);
[[nodiscard]] std::wstring_view BoolToJson(bool value);

// The same, appended.
void AppendJsonFloat(std::wstring& out, float value);
void AppendJsonInt(std::wstring& out, std::int64_t value);
void AppendJsonTriple(std::wstring& out, float a, float b, float c);
/// With the quotes around it.
void AppendJsonString(std::wstring& out, std::wstring_view text);

/// Ordered member texts (`"key":value`) of one JSON object, kept in one text. Keys are written
/// as given, without escapes.
class JsonMembers {
  public:
    /// A finished member text.
    void Add(std::wstring_view member);
    /// `"key":` followed by a finished value.
    void AddRaw(std::wstring_view key, std::wstring_view value);
    void AddFloat(std::wstring_view key, float value);
    void AddInt(std::wstring_view key, std::int64_t value);
    void AddBool(std::wstring_view key, bool value);
    /// `"key":"text"`, escaped.
    void AddString(std::wstring_view key, std::wstring_view text);

    [[nodiscard]] bool empty() const { return ends_.empty(); }
    [[nodiscard]] size_t Count() const { return ends_.size(); }
    [[nodiscard]] std::wstring_view operator[](size_t i) const {
        const size_t begin = i == 0 ? 0 : ends_[i - 1];
        return {text_.data() + begin, ends_[i] - begin};
    }
    /// Units of all texts together.
    [[nodiscard]] size_t TextSize() const { return text_.size(); }
    void clear() {
        text_.clear();
        ends_.clear();
    }

  private:
    void Begin(std::wstring_view key);
    void End() { ends_.push_back(text_.size()); }
    std::wstring text_;
    std::vector<size_t> ends_;
};

/// Each member preceded by `prefix`, members separated by ",\n"; "" for none.
[[nodiscard]] std::wstring JoinJsonMembers(const JsonMembers& members, std::wstring_view prefix);

} // namespace brimwave
