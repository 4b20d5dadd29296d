// Arrays and bit arrays.
#include <algorithm>

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/operators.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

// The array of an array function's first argument.
ArrayObject& Subject(const wchar_t* function, const Value& value) {
    auto* array = value.As<ArrayObject>();
    if (!array)
        RaiseNoFunction(function, value);
    return *array;
}

Value FindItem(Interpreter& in, const Value& collection, const Value& wanted) {
    int32_t index = 0;
    bool found = false;
    if (!collection.AsObject() || !collection.AsObject()->IsCollection())
        RaiseNoFunction(L"findItem", collection);
    in.ForEach(collection, [&](const Value& item) {
        ++index;
        if (index % 16 == 0)
            in.Charge(1);
        found = EqualValues(item, wanted);
        return !found;
    });
    return Value::Integer(found ? index : 0);
}

Value Append(Interpreter&, Arguments& args) {
    Subject(L"append", args.items[0]).Append(args.items[1]);
    return args.items[0];
}

Value AppendIfUnique(Interpreter& in, Arguments& args) {
    ArrayObject& array = Subject(L"appendIfUnique", args.items[0]);
    const bool isNew = FindItem(in, args.items[0], args.items[1]).AsWhole() == 0;
    if (isNew)
        array.Append(args.items[1]);
    return Value::Bool(isNew);
}

Value Join(Interpreter& in, Arguments& args) {
    ArrayObject& array = Subject(L"join", args.items[0]);
    const std::vector<Value> added = in.Items(args.items[1]);
    for (const Value& item : added)
        array.Append(item);
    return args.items[0];
}

Value InsertItem(Interpreter& in, Arguments& args) {
    ArrayObject& array = Subject(L"insertItem", args.items[1]);
    const size_t position = ToPosition(args.items[2]);
    in.Charge(std::max(position, array.Items().size()) / 8);
    array.Insert(position, args.items[0]);
    return args.items[1];
}

Value DeleteItem(Interpreter& in, Arguments& args) {
    ArrayObject& array = Subject(L"deleteItem", args.items[0]);
    const size_t position = ToPosition(args.items[1]);
    if (position >= array.Items().size())
        RaiseRuntime(L"deleteItem index out of range: " + TextOf(args.items[1]));
    in.Charge(array.Items().size() / 8);
    array.Erase(position);
    return args.items[0];
}

// Sorts by a comparison that may throw or contradict itself: merging always ends, and touches
// nothing but the copy it works on.
template <class Before>
void MergeSort(std::vector<Value>& items, size_t first, size_t last, const Before& before) {
    if (last - first < 2)
        return;
    const size_t middle = first + (last - first) / 2;
    MergeSort(items, first, middle, before);
    MergeSort(items, middle, last, before);
    std::vector<Value> merged;
    merged.reserve(last - first);
    size_t left = first;
    size_t right = middle;
    while (left < middle && right < last)
        merged.push_back(before(items[right], items[left]) ? items[right++] : items[left++]);
    merged.insert(merged.end(), items.begin() + static_cast<std::ptrdiff_t>(left),
                  items.begin() + static_cast<std::ptrdiff_t>(middle));
    merged.insert(merged.end(), items.begin() + static_cast<std::ptrdiff_t>(right),
                  items.begin() + static_cast<std::ptrdiff_t>(last));
    std::move(merged.begin(), merged.end(), items.begin() + static_cast<std::ptrdiff_t>(first));
}

Value Sort(Interpreter& in, Arguments& args) {
    ArrayObject& array = Subject(L"sort", args.items[0]);
    std::vector<Value> items = array.Items();
    MergeSort(items, 0, items.size(), [&in](const Value& a, const Value& b) {
        in.Charge(1);
        return Compare(a, b, L"<") < 0;
    });
    array.Assign(std::move(items));
    return args.items[0];
}

// qsort array comparer [start:] [end:] [key:value ...], the rest goes to the comparer.
Value QuickSort(Interpreter& in, Arguments& args) {
    ArrayObject& array = Subject(L"qsort", args.items[0]);
    std::vector<Value> items = array.Items();
    size_t first = 0;
    size_t last = items.size();
    Arguments extra;
    for (const auto& [name, value] : args.keywords) {
        if (name == L"start")
            first = std::min(ToPosition(value), items.size());
        else if (name == L"end")
            last = std::min(ToPosition(value) + 1, items.size());
        else
            extra.keywords.emplace_back(name, value);
    }
    if (first < last) {
        MergeSort(items, first, last, [&](const Value& a, const Value& b) {
            Arguments pair = extra;
            pair.items = {a, b};
            return ToReal(in.Call(args.items[1], pair)) < 0;
        });
    }
    array.Assign(std::move(items));
    return args.items[0];
}

Value MakeUnique(Interpreter& in, Arguments& args) {
    const ArrayObject& array = Subject(L"makeUniqueArray", args.items[0]);
    auto unique = std::make_shared<ArrayObject>();
    const std::vector<Value> items = array.Items();
    for (const Value& item : items) {
        if (FindItem(in, {unique}, item).AsWhole() == 0)
            unique->Append(item);
    }
    return {unique};
}

// bsearch key array comparer
Value BinarySearch(Interpreter& in, Arguments& args) {
    const ArrayObject& array = Subject(L"bsearch", args.items[1]);
    size_t low = 0;
    size_t high = array.Items().size();
    while (low < high && high <= array.Items().size()) {
        const size_t middle = low + (high - low) / 2;
        const Value item = array.Items()[middle];
        Arguments pair;
        pair.items = {args.items[0], item};
        const double order = ToReal(in.Call(args.items[2], pair));
        if (order == 0)
            return item;
        if (order < 0)
            high = middle;
        else
            low = middle + 1;
    }
    return {};
}

} // namespace

void RegisterArrays(Interpreter& in) {
    in.Define(L"append", 2, 2, Append);
    in.Define(L"appendIfUnique", 2, 2, AppendIfUnique);
    in.Define(L"join", 2, 2, Join);
    in.Define(L"insertItem", 3, 3, InsertItem);
    in.Define(L"deleteItem", 2, 2, DeleteItem);
    in.Define(L"findItem", 2, 2, [](Interpreter& i, Arguments& args) {
        return FindItem(i, args.items[0], args.items[1]);
    });
    in.Define(L"sort", 1, 1, Sort);
    in.Define(L"qsort", 2, 2, QuickSort);
    in.Define(L"makeUniqueArray", 1, 1, MakeUnique);
    in.Define(L"bsearch", 3, 3, BinarySearch);
}

} // namespace simhost::script
