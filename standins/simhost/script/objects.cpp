#include "simhost/script/objects.h"

#include <algorithm>

#include "simhost/script/convert.h"
#include "simhost/script/error.h"
#include "simhost/script/limits.h"
#include "simhost/script/number.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

constexpr size_t printedItems = 20; // the rest prints as "..."

constexpr std::wstring_view axisNames[] = {L"x", L"y", L"z", L"w"};
constexpr std::wstring_view colorNames[] = {L"r", L"g", L"b", L"a"};
constexpr std::wstring_view longColorNames[] = {L"red", L"green", L"blue", L"alpha"};

} // namespace

StringObject::StringObject(std::wstring text) : text_(std::move(text)) {
    if (text_.size() > longestString)
        throw ScriptError(ScriptError::Kind::Limit, L"String too long");
    share_.Set(text_.size() * sizeof(wchar_t));
}

void StringObject::Print(Printer& printer, bool nested) const {
    printer.Append(nested ? L"\"" + text_ + L"\"" : text_);
}

bool StringObject::Equals(const Object& other) const {
    const auto* text = dynamic_cast<const StringObject*>(&other);
    return text && text->text_ == text_;
}

std::optional<Value> StringObject::FindProperty(const std::wstring& name) {
    return name == L"count" ? std::optional(Value::Count(text_.size())) : std::nullopt;
}

std::optional<Value> StringObject::FindElement(const Value& index) {
    const size_t position = ToPosition(index);
    return position < text_.size() ? MakeString(text_.substr(position, 1)) : Value();
}

std::optional<Value> StringObject::Copy() {
    return MakeString(text_);
}

void NameObject::Print(Printer& printer, bool nested) const {
    printer.Append(nested ? L"#" + text_ : text_);
}

bool NameObject::Equals(const Object& other) const {
    const auto* name = dynamic_cast<const NameObject*>(&other);
    return name && EqualNoCase(name->text_, text_);
}

ArrayObject::ArrayObject(std::vector<Value> items) : items_(std::move(items)) {
    Resize(items_.size());
}

void ArrayObject::Resize(size_t size) {
    if (size > longestArray)
        throw ScriptError(ScriptError::Kind::Limit, L"Array too long");
    if (size > items_.capacity()) {
        const size_t grown = std::max(size, items_.capacity() * 2);
        share_.Set(grown * sizeof(Value));
        items_.reserve(grown);
    } else {
        share_.Set(items_.capacity() * sizeof(Value));
    }
    items_.resize(size);
}

void ArrayObject::Append(Value value) {
    Insert(items_.size(), std::move(value));
}

void ArrayObject::Insert(size_t position, Value value) {
    const size_t size = items_.size();
    Resize(std::max(size, position) + 1);
    if (position < size) {
        std::move_backward(items_.begin() + static_cast<std::ptrdiff_t>(position), items_.end() - 1,
                           items_.end());
    }
    items_[position] = std::move(value);
}

void ArrayObject::Erase(size_t position) {
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(position));
}

void ArrayObject::Print(Printer& printer, bool) const {
    printer.Append(L"#(");
    for (size_t i = 0; i < items_.size(); ++i) {
        if (i > 0)
            printer.Append(L", ");
        if (i == printedItems) {
            printer.Append(L"...");
            break;
        }
        printer.Append(items_[i], true);
    }
    printer.Append(L")");
}

std::optional<Value> ArrayObject::FindProperty(const std::wstring& name) {
    return name == L"count" ? std::optional(Value::Count(items_.size())) : std::nullopt;
}

std::optional<Value> ArrayObject::FindElement(const Value& index) {
    return FindItem(ToPosition(index)).value_or(Value());
}

bool ArrayObject::SetElement(const Value& index, const Value& value) {
    const size_t position = ToPosition(index);
    if (position >= items_.size())
        Insert(position, value);
    else
        items_[position] = value;
    return true;
}

std::optional<Value> ArrayObject::FindItem(size_t position) {
    return position < items_.size() ? std::optional(items_[position]) : std::nullopt;
}

// A new list of the same values.
std::optional<Value> ArrayObject::Copy() {
    return MakeArray(items_);
}

size_t VectorObject::Size() const {
    return kind_ == VectorKind::Point2 ? 2 : kind_ == VectorKind::Point3 ? 3 : 4;
}

std::wstring VectorObject::ClassName() const {
    return kind_ == VectorKind::Color ? L"Color" : L"Point" + std::to_wstring(Size());
}

void VectorObject::Print(Printer& printer, bool) const {
    const bool color = kind_ == VectorKind::Color;
    const size_t count = color && components_[3] == 255 ? 3 : Size();
    printer.Append(color ? L"(color " : L"[");
    for (size_t i = 0; i < count; ++i) {
        if (i > 0)
            printer.Append(color ? L" " : L",");
        printer.Append(SixDigitText(components_[i]));
    }
    printer.Append(color ? L")" : L"]");
}

bool VectorObject::Equals(const Object& other) const {
    const auto* vector = dynamic_cast<const VectorObject*>(&other);
    return vector && vector->kind_ == kind_ && vector->components_ == components_;
}

float* VectorObject::FindComponent(const std::wstring& name) {
    const bool color = kind_ == VectorKind::Color;
    for (size_t i = 0; i < Size(); ++i) {
        if (color ? name == colorNames[i] || name == longColorNames[i] : name == axisNames[i])
            return &components_[i];
    }
    return nullptr;
}

std::optional<Value> VectorObject::FindProperty(const std::wstring& name) {
    const float* component = FindComponent(name);
    return component ? std::optional(Value::Float(*component)) : std::nullopt;
}

bool VectorObject::SetProperty(const std::wstring& name, const Value& value) {
    float* component = FindComponent(name);
    if (component)
        *component = ToFloat(value);
    return component != nullptr;
}

std::optional<Value> VectorObject::Copy() {
    return Value(std::make_shared<VectorObject>(kind_, components_));
}

Value MakeString(std::wstring text) {
    return {std::make_shared<StringObject>(std::move(text))};
}
Value MakeName(std::wstring text) {
    return {std::make_shared<NameObject>(std::move(text))};
}
Value MakeArray(std::vector<Value> items) {
    return {std::make_shared<ArrayObject>(std::move(items))};
}
Value MakeVector(VectorKind kind, float x, float y, float z, float w) {
    return {std::make_shared<VectorObject>(kind, std::array<float, 4>{x, y, z, w})};
}

} // namespace simhost::script
