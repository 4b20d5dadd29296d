// Strings and names.
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/objects.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {

void StringObject::Print(Printer& printer, bool nested) const {
    if (!nested) {
        printer.Put(text_);
        return;
    }
    printer.Put(L"\"");
    printer.Put(text_);
    printer.Put(L"\"");
}

bool StringObject::Equals(const Object& other) const {
    const auto* text = dynamic_cast<const StringObject*>(&other);
    return text && text->text_ == text_;
}

bool StringObject::GetProperty(Interpreter&, const std::wstring& name, Value& result) {
    if (name != L"count")
        return false;
    result = Value::Integer(static_cast<int32_t>(text_.size()));
    return true;
}

bool StringObject::GetIndex(Interpreter&, const Value& index, Value& result) {
    const size_t position = ToPosition(index);
    result = position < text_.size() ? MakeString(std::wstring(1, text_[position])) : Value();
    return true;
}

bool StringObject::SetIndex(Interpreter&, const Value& index, const Value& value) {
    const size_t position = ToPosition(index);
    const std::wstring& unit = ToString(value);
    if (position >= text_.size() || unit.empty())
        RaiseRuntime(L"String index out of range: " + TextOf(index));
    text_[position] = unit[0];
    return true;
}

void NameObject::Print(Printer& printer, bool nested) const {
    if (nested)
        printer.Put(L"#");
    printer.Put(text_);
}

bool NameObject::Equals(const Object& other) const {
    const auto* name = dynamic_cast<const NameObject*>(&other);
    return name && EqualNoCase(name->text_, text_);
}

Value MakeString(std::wstring text) {
    return {std::make_shared<StringObject>(std::move(text))};
}
Value MakeName(std::wstring text) {
    return {std::make_shared<NameObject>(std::move(text))};
}

} // namespace simhost::script
