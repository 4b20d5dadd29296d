#pragma once
// From script values to C++ ones. What does not fit raises the host's conversion error.
#include <string>

#include "simhost/script/objects.h"

namespace simhost::script {

/// `value as string`.
[[nodiscard]] std::wstring TextOf(const Value& value);
/// As it stands in messages and lists: strings in quotes.
[[nodiscard]] std::wstring QuotedText(const Value& value);
/// What `classOf` prints.
[[nodiscard]] std::wstring ClassNameOf(const Value& value);
/// Whether `for` can walk it.
[[nodiscard]] bool IsCollection(const Value& value);

[[nodiscard]] bool ToBool(const Value& value);
[[nodiscard]] int64_t ToWhole(const Value& value); // numbers, cut towards zero
[[nodiscard]] int64_t ToWhole(double real);        // the nearest of 64 bits; 0 for no number
[[nodiscard]] int ToInt(const Value& value);       // the same within 32 bits
[[nodiscard]] float ToFloat(const Value& value);
/// `type`: what the error calls a string that was wanted ("FileName").
[[nodiscard]] const std::wstring& ToString(const Value& value, const wchar_t* type = L"String");
/// A name, or a string used as one.
[[nodiscard]] std::wstring ToNameText(const Value& value);
[[nodiscard]] VectorObject& ToVector(const Value& value, VectorKind kind);
/// Position (from 0) that an index counted from 1 means. Throws below 1.
[[nodiscard]] size_t ToPosition(const Value& index);

/// `==`: numbers by value, strings case-sensitive, names in any case, objects by identity.
[[nodiscard]] bool EqualValues(const Value& a, const Value& b);

} // namespace simhost::script
