// The inside of literals: where a number ends, what a string holds.
#include "simhost/script/lexer.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

class NumberScanner {
  public:
    NumberScanner(std::wstring_view text, size_t from) : text_(text), at_(from) {}

    NumberSpan Scan() {
        if (Unit() == L'0' && LowerUnit(Unit(1)) == L'x')
            return Hex();
        const size_t start = at_;
        Digits();
        if (Unit() == L':' && at_ > start && IsClock())
            return {at_, true, true};
        if (Unit() == L'.' && Unit(1) != L'.') {
            ++at_;
            Digits();
        }
        Exponent();
        const wchar_t suffix = LowerUnit(Unit());
        if ((suffix == L'l' || suffix == L'p') && !IsWordUnit(Unit(1)))
            return {at_ + 1, false, true};
        return Time();
    }

  private:
    [[nodiscard]] wchar_t Unit(size_t ahead = 0) const {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : L'\0';
    }

    bool Digits() {
        const size_t start = at_;
        while (IsDigit(Unit()))
            ++at_;
        return at_ > start;
    }

    NumberSpan Hex() {
        at_ += 2;
        const size_t start = at_;
        while (HexDigit(Unit()) >= 0)
            ++at_;
        const bool any = at_ > start;
        if (LowerUnit(Unit()) == L'l' || LowerUnit(Unit()) == L'p')
            ++at_;
        return {at_, false, any};
    }

    void Exponent() {
        const wchar_t mark = LowerUnit(Unit());
        if (mark != L'e' && mark != L'd')
            return;
        const size_t sign = Unit(1) == L'+' || Unit(1) == L'-' ? 1 : 0;
        if (IsDigit(Unit(1 + sign))) {
            at_ += 1 + sign;
            Digits();
        } else if (mark == L'd' && !IsWordUnit(Unit(1))) {
            ++at_; // a Double without exponent
        }
    }

    // minutes:seconds.frames
    bool IsClock() {
        size_t i = at_ + 1;
        while (i < text_.size() && IsDigit(text_[i]))
            ++i;
        if (i == at_ + 1 || i >= text_.size() || text_[i] != L'.')
            return false;
        at_ = i + 1;
        Digits();
        return true;
    }

    // 10f, 1m30s, 2s5t: each unit ends its number.
    NumberSpan Time() {
        const size_t numberEnd = at_;
        bool any = false;
        for (;;) {
            const wchar_t unit = LowerUnit(Unit());
            if (unit != L'f' && unit != L's' && unit != L'm' && unit != L't' && unit != L'n')
                break;
            ++at_;
            any = true;
            const size_t start = at_;
            Digits();
            if (at_ > start && Unit() == L'.') {
                ++at_;
                Digits();
            }
            if (at_ == start)
                break;
        }
        if (!any)
            return {numberEnd, false, true};
        const bool endsInUnit = !IsDigit(text_[at_ - 1]) && text_[at_ - 1] != L'.';
        return {at_, true, endsInUnit};
    }

    std::wstring_view text_;
    size_t at_;
};

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

} // namespace

NumberSpan ScanNumber(std::wstring_view text, size_t from) {
    return NumberScanner(text, from).Scan();
}

std::wstring TokenList::StringValue(const Token& token) const {
    const std::wstring_view text = Text(token);
    if (token.kind == Tok::Verbatim)
        return std::wstring(text.substr(2, text.size() - 3));
    const std::wstring_view body = text.substr(1, text.size() - 2);
    std::wstring value;
    value.reserve(body.size());
    for (size_t i = 0; i < body.size(); ++i) {
        if (body[i] != L'\\' || i + 1 == body.size()) {
            value.push_back(body[i]);
            continue;
        }
        const wchar_t next = body[i + 1];
        if (const wchar_t plain = SimpleEscape(next)) {
            value.push_back(plain);
            ++i;
        } else if (next == L'x' && i + 2 < body.size() && HexDigit(body[i + 2]) >= 0) {
            uint32_t code = 0;
            size_t digit = i + 2;
            for (; digit < body.size() && HexDigit(body[digit]) >= 0; ++digit)
                code = code > 0x10FFFF ? code
                                       : code * 16 + static_cast<uint32_t>(HexDigit(body[digit]));
            AppendCodePoint(value, code);
            i = digit - 1;
        } else {
            value.push_back(L'\\');
        }
    }
    return value;
}

std::wstring TokenList::WordValue(const Token& token) const {
    std::wstring_view text = Text(token);
    if (token.kind == Tok::Name)
        text.remove_prefix(1);
    if (text.size() >= 2 && text.front() == L'\'')
        text = text.substr(1, text.size() - 2);
    return std::wstring(text);
}

} // namespace simhost::script
