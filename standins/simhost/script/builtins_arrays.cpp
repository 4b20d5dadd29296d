#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

// The array of an array function's argument.
ArrayObject& ArrayOf(const wchar_t* function, const Value& value) {
    auto* array = value.As<ArrayObject>();
    if (!array)
        RaiseNoFunction(function, value);
    return *array;
}

// Counted from 1; 0 when there is none.
int32_t IndexOf(Interpreter& in, const Value& collection, const Value& wanted) {
    if (!IsCollection(collection))
        RaiseNoFunction(L"findItem", collection);
    int32_t index = 0;
    bool found = false;
    in.ForEach(collection, [&](const Value& item) {
        ++index;
        if (index % 16 == 0)
            in.Charge(1);
        found = EqualValues(item, wanted);
        return !found;
    });
    return found ? index : 0;
}

Value Append(Interpreter&, Arguments& args) {
    ArrayOf(L"append", args.items[0]).Append(args.items[1]);
    return args.items[0];
}

Value AppendIfUnique(Interpreter& in, Arguments& args) {
    ArrayObject& array = ArrayOf(L"appendIfUnique", args.items[0]);
    const bool isNew = IndexOf(in, args.items[0], args.items[1]) == 0;
    if (isNew)
        array.Append(args.items[1]);
    return Value::Bool(isNew);
}

Value Join(Interpreter& in, Arguments& args) {
    ArrayObject& array = ArrayOf(L"join", args.items[0]);
    for (const Value& item : in.CollectItems(args.items[1]))
        array.Append(item);
    return args.items[0];
}

Value InsertItem(Interpreter& in, Arguments& args) {
    ArrayObject& array = ArrayOf(L"insertItem", args.items[1]);
    in.Charge(array.Items().size() / 8);
    array.Insert(ToPosition(args.items[2]), args.items[0]);
    return args.items[1];
}

Value DeleteItem(Interpreter& in, Arguments& args) {
    ArrayObject& array = ArrayOf(L"deleteItem", args.items[0]);
    const size_t position = ToPosition(args.items[1]);
    if (position >= array.Items().size())
        RaiseRuntime(L"deleteItem index out of range: " + TextOf(args.items[1]));
    in.Charge(array.Items().size() / 8);
    array.Erase(position);
    return args.items[0];
}

} // namespace

void RegisterArrays(Interpreter& in) {
    in.Define(L"append", 2, 2, Append);
    in.Define(L"appendIfUnique", 2, 2, AppendIfUnique);
    in.Define(L"join", 2, 2, Join);
    in.Define(L"insertItem", 3, 3, InsertItem);
    in.Define(L"deleteItem", 2, 2, DeleteItem);
    in.Define(L"findItem", 2, 2, [](Interpreter& i, Arguments& args) {
        return Value::Integer(IndexOf(i, args.items[0], args.items[1]));
    });
}

} // namespace simhost::script
