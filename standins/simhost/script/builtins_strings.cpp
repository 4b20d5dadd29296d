#include <algorithm>

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

Value Substring(Interpreter& in, Arguments& args) {
    const std::wstring& text = ToString(args.items[0]);
    const auto start = static_cast<size_t>(std::max(1, ToInt(args.items[1]))) - 1;
    const int count = ToInt(args.items[2]);
    in.Charge(text.size() / 64);
    return MakeString(text.substr(std::min(start, text.size()),
                                  count < 0 ? std::wstring::npos : static_cast<size_t>(count)));
}

Value SubstituteString(Interpreter& in, Arguments& args) {
    const std::wstring& text = ToString(args.items[0]);
    const std::wstring& from = ToString(args.items[1]);
    const std::wstring& to = ToString(args.items[2]);
    in.Charge(text.size() / 8);
    std::wstring result;
    size_t start = 0;
    while (!from.empty() && result.size() <= longestString) {
        const size_t found = text.find(from, start);
        if (found == std::wstring::npos)
            break;
        result.append(text, start, found - start).append(to);
        start = found + from.size();
    }
    return MakeString(result.append(text, start));
}

Value FindString(Interpreter& in, Arguments& args) {
    const std::wstring& text = ToString(args.items[0]);
    in.Charge(text.size() / 16);
    const size_t found = text.find(ToString(args.items[1]));
    return found == std::wstring::npos ? Value() : Value::Count(found + 1);
}

// filterString text delimiters [splitEmptyTokens:true]
Value FilterString(Interpreter& in, Arguments& args) {
    const std::wstring& text = ToString(args.items[0]);
    const std::wstring& delimiters = ToString(args.items[1]);
    const Value* keepEmpty = args.FindKeyword(L"splitemptytokens");
    const bool keep = keepEmpty && ToBool(*keepEmpty);
    in.Charge(text.size() / 4);
    std::vector<Value> tokens;
    for (size_t start = 0; start <= text.size();) {
        const size_t end = std::min(text.find_first_of(delimiters, start), text.size());
        if (end > start || (keep && !text.empty()))
            tokens.push_back(MakeString(text.substr(start, end - start)));
        start = end + 1;
    }
    return MakeArray(std::move(tokens));
}

Value MatchPattern(Interpreter& in, Arguments& args) {
    const std::wstring& text = ToString(args.items[0]);
    const Value* pattern = args.FindKeyword(L"pattern");
    if (!pattern)
        RaiseRuntime(L"matchPattern requires pattern: argument");
    const Value* ignoreCase = args.FindKeyword(L"ignorecase");
    const std::wstring& wanted = ToString(*pattern);
    in.Charge(text.size() * (wanted.size() / 64 + 1) / 16);
    if (ignoreCase && !ToBool(*ignoreCase))
        return Value::Bool(MatchesWildcards(text, wanted));
    return Value::Bool(MatchesWildcards(Lower(text), Lower(wanted)));
}

// Without the units of a set (blanks, when none is given) at one end.
void DefineTrim(Interpreter& in, const wchar_t* name, bool left) {
    in.Define(name, 1, 2, [left](Interpreter&, Arguments& args) {
        const std::wstring& text = ToString(args.items[0]);
        const std::wstring set = args.items.size() > 1 ? ToString(args.items[1]) : L" \t\r\n";
        const size_t first = left ? text.find_first_not_of(set) : 0;
        const size_t last = left ? text.size() : text.find_last_not_of(set) + 1;
        return MakeString(text.substr(std::min(first, last), last - std::min(first, last)));
    });
}

void DefineCase(Interpreter& in, const wchar_t* name, std::wstring (*change)(std::wstring_view)) {
    in.Define(name, 1, 1, [change](Interpreter& i, Arguments& args) {
        const std::wstring& text = ToString(args.items[0]);
        i.Charge(text.size() / 64);
        return MakeString(change(text));
    });
}

} // namespace

void RegisterStrings(Interpreter& in) {
    in.Define(L"substring", 3, 3, Substring);
    in.Define(L"substituteString", 3, 3, SubstituteString);
    in.Define(L"findString", 2, 2, FindString);
    in.Define(L"filterString", 2, 2, FilterString);
    in.Define(L"matchPattern", 1, 1, MatchPattern);
    DefineCase(in, L"toLower", Lower);
    DefineCase(in, L"toUpper", Upper);
    DefineTrim(in, L"trimLeft", true);
    DefineTrim(in, L"trimRight", false);
}

} // namespace simhost::script
