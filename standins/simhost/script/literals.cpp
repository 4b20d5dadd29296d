// What stands inside the tokens of strings and names.
#include "simhost/script/lexer.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

void AppendCodePoint(std::wstring& text, uint32_t code) {
    if (code < 0x10000) {
        text.push_back(static_cast<wchar_t>(code));
    } else if (code <= 0x10FFFF) {
        text.push_back(static_cast<wchar_t>(0xD800 + ((code - 0x10000) >> 10)));
        text.push_back(static_cast<wchar_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
    } else {
        text.push_back(L'\xFFFD');
    }
}

// What a backslash before `unit` stands for; 0 when the backslash is an ordinary character.
wchar_t SimpleEscape(wchar_t unit) {
    switch (unit) {
    case L'n':
        return L'\n';
    case L'r':
        return L'\r';
    case L't':
        return L'\t';
    case L'"':
    case L'\\':
    case L'*':
    case L'?':
    case L'%':
        return unit;
    default:
        return 0;
    }
}

// Takes the hexadecimal digits from `at` on.
uint32_t TakeHex(std::wstring_view body, size_t& at) {
    uint32_t code = 0;
    for (; at < body.size() && HexDigit(body[at]) >= 0; ++at)
        code = code > 0x10FFFF ? code : code * 16 + static_cast<uint32_t>(HexDigit(body[at]));
    return code;
}

} // namespace

std::wstring TokenList::StringValue(const Token& token) const {
    const std::wstring_view text = Text(token);
    if (token.kind == Tok::Verbatim)
        return std::wstring(text.substr(2, text.size() - 3));
    const std::wstring_view body = text.substr(1, text.size() - 2);
    std::wstring value;
    value.reserve(body.size());
    for (size_t i = 0; i < body.size();) {
        const wchar_t unit = body[i++];
        const wchar_t next = i < body.size() ? body[i] : L'\0';
        if (unit != L'\\') {
            value.push_back(unit);
        } else if (const wchar_t plain = SimpleEscape(next)) {
            value.push_back(plain);
            ++i;
        } else if (next == L'x' && i + 1 < body.size() && HexDigit(body[i + 1]) >= 0) {
            AppendCodePoint(value, TakeHex(body, ++i));
        } else {
            value.push_back(L'\\');
        }
    }
    return value;
}

std::wstring TokenList::WordValue(const Token& token) const {
    std::wstring_view text = Text(token);
    if (token.kind != Tok::Word)
        text.remove_prefix(1);
    if (text.size() >= 2 && text.front() == L'\'')
        text = text.substr(1, text.size() - 2);
    return std::wstring(text);
}

} // namespace simhost::script
