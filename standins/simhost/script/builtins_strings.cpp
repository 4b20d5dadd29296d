// Strings: searching, cutting, patterns, formatted numbers.
#include <algorithm>
#include <cstdio>

#include "simhost/script/builtins.h"
#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/raise.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

constexpr std::wstring_view blanks = L" \t\r\n";

Value LimitedString(Interpreter& in, std::wstring text) {
    if (text.size() > in.Options().limits.stringUnits)
        throw ScriptError(ScriptError::Kind::Limit, L"String too long");
    in.Charge(text.size() / 64);
    return MakeString(std::move(text));
}

// Position from 0 that a 1-based number means, bounded by the text's length.
size_t Bounded(int number, size_t size) {
    return number < 1 ? 0 : std::min(static_cast<size_t>(number) - 1, size);
}

Value Substring(Interpreter& in, Arguments& args) {
    const std::wstring& text = ToString(args.items[0]);
    const size_t from = Bounded(ToInt(args.items[1]), text.size());
    const int count = ToInt(args.items[2]);
    return LimitedString(
        in, text.substr(from, count < 0 ? std::wstring::npos : static_cast<size_t>(count)));
}

Value Replace(Interpreter& in, Arguments& args) {
    std::wstring text = ToString(args.items[0]);
    const size_t from = Bounded(ToInt(args.items[1]), text.size());
    const auto count = static_cast<size_t>(std::max(0, ToInt(args.items[2])));
    text.replace(from, std::min(count, text.size() - from), ToString(args.items[3]));
    return LimitedString(in, std::move(text));
}

Value SubstituteString(Interpreter& in, Arguments& args) {
    const std::wstring& text = ToString(args.items[0]);
    const std::wstring& from = ToString(args.items[1]);
    const std::wstring& to = ToString(args.items[2]);
    in.Charge(text.size() / 8);
    std::wstring result;
    size_t start = 0;
    while (!from.empty()) {
        const size_t found = text.find(from, start);
        if (found == std::wstring::npos)
            break;
        result.append(text, start, found - start).append(to);
        start = found + from.size();
        if (result.size() > in.Options().limits.stringUnits)
            break;
    }
    return LimitedString(in, result.append(text, start));
}

Value FindString(Interpreter& in, Arguments& args) {
    const std::wstring& text = ToString(args.items[0]);
    in.Charge(text.size() / 16);
    const size_t found = text.find(ToString(args.items[1]));
    return found == std::wstring::npos ? Value() : Value::Integer(static_cast<int32_t>(found + 1));
}

// filterString text delimiters [splitEmptyTokens:true]
Value FilterString(Interpreter& in, Arguments& args) {
    const std::wstring& text = ToString(args.items[0]);
    const std::wstring& delimiters = ToString(args.items[1]);
    const Value* keepEmpty = args.Keyword(L"splitemptytokens");
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
    const Value* pattern = args.Keyword(L"pattern");
    if (!pattern)
        RaiseRuntime(L"matchPattern requires pattern: argument");
    const Value* ignoreCase = args.Keyword(L"ignorecase");
    const std::wstring& wanted = ToString(*pattern);
    in.Charge(text.size() * (wanted.size() / 64 + 1) / 16);
    if (ignoreCase && !ToBool(*ignoreCase))
        return Value::Bool(MatchesWildcards(text, wanted));
    return Value::Bool(MatchesWildcards(Lower(text), Lower(wanted)));
}

Value TrimText(const std::wstring& text, const std::wstring& set, bool left, bool right) {
    size_t start = 0;
    size_t end = text.size();
    while (left && start < end && set.find(text[start]) != std::wstring::npos)
        ++start;
    while (right && end > start && set.find(text[end - 1]) != std::wstring::npos)
        --end;
    return MakeString(text.substr(start, end - start));
}

void DefineTrim(Interpreter& in, const wchar_t* name, bool left, bool right) {
    in.Define(name, 1, 2, [left, right](Interpreter&, Arguments& args) {
        const std::wstring set =
            args.items.size() > 1 ? ToString(args.items[1]) : std::wstring(blanks);
        return TrimText(ToString(args.items[0]), set, left, right);
    });
}

// A printf conversion such as "05.2f", with its width and precision kept within reason.
struct NumberFormat {
    std::string flags;
    int width = 0;
    int precision = -1;
    char type = 0;
};

NumberFormat ParseFormat(std::wstring_view text) {
    NumberFormat format;
    size_t i = !text.empty() && text[0] == L'%' ? 1 : 0;
    const auto number = [&] {
        int value = 0;
        for (; i < text.size() && IsDigit(text[i]); ++i)
            value = std::min(200, value * 10 + static_cast<int>(text[i] - L'0'));
        return value;
    };
    for (; i < text.size() && std::wstring_view(L"-+ #0").find(text[i]) != std::wstring::npos; ++i)
        format.flags.push_back(static_cast<char>(text[i]));
    format.width = number();
    if (i < text.size() && text[i] == L'.') {
        ++i;
        format.precision = number();
    }
    if (i < text.size() && text[i] < 0x80)
        format.type = static_cast<char>(text[i]);
    return format;
}

Value FormattedPrint(Interpreter&, Arguments& args) {
    const Value* given = args.Keyword(L"format");
    if (!given)
        return MakeString(TextOf(args.items[0]));
    const NumberFormat format = ParseFormat(ToString(*given));
    const std::string head = "%" + format.flags + "*.*";
    char buffer[1024] = "";
    switch (format.type) {
    case 'd':
    case 'i':
    case 'u':
    case 'x':
    case 'X':
    case 'o': {
        const std::string pattern = head + "ll" + format.type;
        std::snprintf(buffer, sizeof(buffer), pattern.c_str(), format.width, format.precision,
                      static_cast<long long>(ToWhole(args.items[0])));
        break;
    }
    case 'f':
    case 'e':
    case 'g':
    case 'E':
    case 'G': {
        const std::string pattern = head + format.type;
        std::snprintf(buffer, sizeof(buffer), pattern.c_str(), format.width, format.precision,
                      ToReal(args.items[0]));
        break;
    }
    case 's': {
        std::wstring text = ToString(args.items[0]);
        if (format.precision >= 0)
            text.resize(std::min(text.size(), static_cast<size_t>(format.precision)));
        const auto width = static_cast<size_t>(format.width);
        if (text.size() < width)
            text.insert(format.flags.find('-') == std::string::npos ? 0 : text.size(),
                        std::wstring(width - text.size(), L' '));
        return MakeString(std::move(text));
    }
    default:
        RaiseRuntime(L"Runtime error: bad format: " + ToString(*given));
    }
    return MakeString(Widen(buffer));
}

int CompareText(std::wstring_view a, std::wstring_view b) {
    const int order = a.compare(b);
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

} // namespace

void RegisterStrings(Interpreter& in) {
    in.Define(L"substring", 3, 3, Substring);
    in.Define(L"replace", 4, 4, Replace);
    in.Define(L"substituteString", 3, 3, SubstituteString);
    in.Define(L"findString", 2, 2, FindString);
    in.Define(L"filterString", 2, 2, FilterString);
    in.Define(L"matchPattern", 1, 1, MatchPattern);
    in.Define(L"formattedPrint", 1, 1, FormattedPrint);
    in.Define(L"toLower", 1, 1, [](Interpreter& i, Arguments& args) {
        return LimitedString(i, Lower(ToString(args.items[0])));
    });
    in.Define(L"toUpper", 1, 1, [](Interpreter& i, Arguments& args) {
        return LimitedString(i, Upper(ToString(args.items[0])));
    });
    DefineTrim(in, L"trimLeft", true, false);
    DefineTrim(in, L"trimRight", false, true);
    in.Define(L"stricmp", 2, 2, [](Interpreter&, Arguments& args) {
        return Value::Integer(
            CompareText(Lower(ToString(args.items[0])), Lower(ToString(args.items[1]))));
    });
}

} // namespace simhost::script
