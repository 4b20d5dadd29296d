// Arrays and bit arrays.
#include <algorithm>

#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/objects.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

constexpr size_t longestList = Limits().arrayItems;
constexpr size_t printedItems = 20; // the rest prints as "..."

} // namespace

void ArrayObject::CheckSize(size_t size) {
    if (size > longestList)
        throw ScriptError(ScriptError::Kind::Limit, L"Array too long");
}

void ArrayObject::Assign(std::vector<Value> items) {
    CheckSize(items.size());
    share_.Set(items.capacity() * sizeof(Value));
    items_ = std::move(items);
}

void ArrayObject::Append(Value value) {
    CheckSize(items_.size() + 1);
    if (items_.size() == items_.capacity()) {
        const size_t grown = std::max<size_t>(4, items_.capacity() * 2);
        share_.Set(grown * sizeof(Value));
        items_.reserve(grown);
    }
    items_.push_back(std::move(value));
}

void ArrayObject::SetAt(size_t position, Value value) {
    if (position >= items_.size()) {
        CheckSize(position);
        while (items_.size() < position)
            Append(Value());
        Append(std::move(value));
        return;
    }
    items_[position] = std::move(value);
}

void ArrayObject::Insert(size_t position, Value value) {
    if (position >= items_.size()) {
        SetAt(position, std::move(value));
        return;
    }
    Append(Value());
    std::move_backward(items_.begin() + static_cast<std::ptrdiff_t>(position), items_.end() - 1,
                       items_.end());
    items_[position] = std::move(value);
}

void ArrayObject::Erase(size_t position) {
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(position));
}

void ArrayObject::Trace(Marker& marker) const {
    for (const Value& item : items_)
        marker.Visit(item);
}

void ArrayObject::DropReferences(std::vector<Value>& garbage) {
    std::move(items_.begin(), items_.end(), std::back_inserter(garbage));
    items_.clear();
}

void ArrayObject::Print(Printer& printer, bool) const {
    printer.Put(L"#(");
    for (size_t i = 0; i < items_.size(); ++i) {
        if (i > 0)
            printer.Put(L", ");
        if (i == printedItems) {
            printer.Put(L"...");
            break;
        }
        printer.Put(items_[i], true);
    }
    printer.Put(L")");
}

bool ArrayObject::GetProperty(Interpreter& interpreter, const std::wstring& name, Value& result) {
    if (name == L"count") {
        result = Value::Integer(static_cast<int32_t>(items_.size()));
        return true;
    }
    // Any other property is asked of every item.
    std::vector<Value> values;
    const std::vector<Value> items = items_;
    for (const Value& item : items) {
        interpreter.Charge(1);
        values.push_back(interpreter.GetProperty(item, name));
    }
    if (items.empty())
        return false;
    result = MakeArray(std::move(values));
    return true;
}

bool ArrayObject::SetProperty(Interpreter& interpreter, const std::wstring& name,
                              const Value& value) {
    if (name == L"count") {
        const int count = ToInt(value);
        if (count < 0)
            RaiseConversion(value, L"Integer");
        CheckSize(static_cast<size_t>(count));
        std::vector<Value> items = items_;
        items.resize(static_cast<size_t>(count));
        Assign(std::move(items));
        return true;
    }
    const std::vector<Value> items = items_;
    for (const Value& item : items)
        interpreter.SetProperty(item, name, value);
    return !items.empty();
}

bool ArrayObject::GetIndex(Interpreter&, const Value& index, Value& result) {
    const size_t position = ToPosition(index);
    result = position < items_.size() ? items_[position] : Value();
    return true;
}

bool ArrayObject::SetIndex(Interpreter& interpreter, const Value& index, const Value& value) {
    const size_t position = ToPosition(index);
    if (position > items_.size())
        interpreter.Charge(position - items_.size());
    SetAt(position, value);
    return true;
}

bool ArrayObject::Item(Interpreter&, size_t position, Value& result) {
    if (position >= items_.size())
        return false;
    result = items_[position];
    return true;
}

void BitArrayObject::Set(size_t position, bool on) {
    if (position >= bits_.size()) {
        if (!on)
            return;
        if (position >= longestList)
            throw ScriptError(ScriptError::Kind::Limit, L"BitArray too long");
        share_.Set(position / 8 + 1);
        bits_.resize(position + 1);
    }
    bits_[position] = on;
}

size_t BitArrayObject::CountOn() const {
    return static_cast<size_t>(std::count(bits_.begin(), bits_.end(), true));
}

void BitArrayObject::Print(Printer& printer, bool) const {
    printer.Put(L"#{");
    bool first = true;
    for (size_t i = 0; i < bits_.size(); ++i) {
        if (!bits_[i])
            continue;
        size_t last = i;
        while (last + 1 < bits_.size() && bits_[last + 1])
            ++last;
        printer.Put(first ? L"" : L", ");
        first = false;
        printer.Put(std::to_wstring(i + 1));
        if (last > i)
            printer.Put(L".." + std::to_wstring(last + 1));
        i = last;
    }
    printer.Put(L"}");
}

bool BitArrayObject::Equals(const Object& other) const {
    const auto* bits = dynamic_cast<const BitArrayObject*>(&other);
    if (!bits || bits->CountOn() != CountOn())
        return false;
    const size_t common = std::min(bits_.size(), bits->bits_.size());
    for (size_t i = 0; i < common; ++i) {
        if (bits_[i] != bits->bits_[i])
            return false;
    }
    return true;
}

bool BitArrayObject::GetProperty(Interpreter&, const std::wstring& name, Value& result) {
    if (name == L"count")
        result = Value::Integer(static_cast<int32_t>(bits_.size()));
    else if (name == L"numberset")
        result = Value::Integer(static_cast<int32_t>(CountOn()));
    else if (name == L"isempty")
        result = Value::Bool(CountOn() == 0);
    else
        return false;
    return true;
}

bool BitArrayObject::GetIndex(Interpreter&, const Value& index, Value& result) {
    const size_t position = ToPosition(index);
    result = Value::Bool(position < bits_.size() && bits_[position]);
    return true;
}

bool BitArrayObject::SetIndex(Interpreter&, const Value& index, const Value& value) {
    Set(ToPosition(index), ToBool(value));
    return true;
}

// The numbers in the set, in order.
bool BitArrayObject::Item(Interpreter& interpreter, size_t position, Value& result) {
    interpreter.Charge(bits_.size() / 64);
    for (size_t i = 0; i < bits_.size(); ++i) {
        if (bits_[i] && position-- == 0) {
            result = Value::Integer(static_cast<int32_t>(i + 1));
            return true;
        }
    }
    return false;
}

Value MakeArray(std::vector<Value> items) {
    return {std::make_shared<ArrayObject>(std::move(items))};
}

} // namespace simhost::script
