#include "simhost/script/lexer.h"

#include <algorithm>

#include "simhost/script/text.h"

namespace simhost::script {
namespace {

bool IsLineBreak(wchar_t unit) {
    return unit == L'\n' || unit == L'\r';
}

// A "." after one of these, without a blank, names a property: it does not start a number.
bool EndsOperand(Tok kind) {
    switch (kind) {
    case Tok::Number:
    case Tok::Time:
    case Tok::String:
    case Tok::Verbatim:
    case Tok::Name:
    case Tok::Word:
    case Tok::Path:
    case Tok::Resource:
    case Tok::RParen:
    case Tok::RBracket:
    case Tok::RBrace:
    case Tok::Question:
        return true;
    default:
        return false;
    }
}

struct Operator {
    const wchar_t* text;
    Tok kind;
};

constexpr Operator operators[] = {
    {L"==", Tok::Equal},        {L"!=", Tok::NotEqual},    {L"<=", Tok::LessEqual},
    {L">=", Tok::GreaterEqual}, {L"+=", Tok::PlusAssign},  {L"-=", Tok::MinusAssign},
    {L"*=", Tok::StarAssign},   {L"/=", Tok::SlashAssign}, {L"::", Tok::DoubleColon},
    {L"..", Tok::DotDot},       {L"(", Tok::LParen},       {L")", Tok::RParen},
    {L"[", Tok::LBracket},      {L"]", Tok::RBracket},     {L"}", Tok::RBrace},
    {L",", Tok::Comma},         {L":", Tok::Colon},        {L".", Tok::Dot},
    {L"=", Tok::Assign},        {L"+", Tok::Plus},         {L"-", Tok::Minus},
    {L"*", Tok::Star},          {L"/", Tok::Slash},        {L"^", Tok::Caret},
    {L"<", Tok::Less},          {L">", Tok::Greater},      {L"&", Tok::Ampersand},
    {L"?", Tok::Question},
};

} // namespace

TokenList::TokenList(std::wstring text) : text_(std::move(text)) {
    if (text_.size() > maxScriptLength) {
        text_.resize(1);
        Bad(0, 1, L"the script is too long");
        Add(Tok::End, 1, 1);
        return;
    }
    Read();
    MatchBrackets();
}

void TokenList::Read() {
    while (SkipBlanks()) {
        const wchar_t unit = text_[at_];
        const wchar_t next = At(at_ + 1);
        const bool dotNumber =
            unit == L'.' && IsDigit(next) &&
            (blankBefore_ || tokens_.empty() || !EndsOperand(tokens_.back().kind));
        if (unit == L';' || IsLineBreak(unit)) {
            if (tokens_.empty() || tokens_.back().kind != Tok::Line)
                Add(Tok::Line, at_, at_ + 1);
            else
                ++at_;
            if (unit != L';')
                NewLine(unit == L'\r' && next == L'\n' ? at_ + 1 : at_);
        } else if (IsDigit(unit) || dotNumber) {
            ReadNumber();
        } else if (IsLetter(unit)) {
            ReadWord();
        } else if (unit == L'\'') {
            ReadQuotedWord();
        } else if (unit == L'"') {
            ReadString();
        } else if (unit == L'@' && next == L'"') {
            ReadVerbatim();
        } else if (unit == L'#') {
            ReadHash();
        } else if (unit == L'$') {
            ReadPath();
        } else if (unit == L'~') {
            ReadResource();
        } else {
            ReadOperator();
        }
    }
    Add(Tok::End, text_.size(), text_.size());
}

void TokenList::Add(Tok kind, size_t start, size_t end) {
    Token token;
    token.kind = kind;
    token.blankBefore = blankBefore_;
    const wchar_t after = At(end);
    token.blankAfter = after == 0 || IsBlank(after) || IsLineBreak(after);
    token.offset = static_cast<uint32_t>(start);
    token.length = static_cast<uint32_t>(end - start);
    token.line = line_;
    token.column = static_cast<uint32_t>(start - lineStart_) + 1;
    tokens_.push_back(token);
    blankBefore_ = false;
    // A token can span lines only as a string.
    for (size_t i = start; i < end && kind != Tok::Line; ++i) {
        if (text_[i] == L'\n' || (text_[i] == L'\r' && At(i + 1) != L'\n')) {
            ++line_;
            lineStart_ = i + 1;
        }
    }
    at_ = end;
}

void TokenList::Bad(size_t start, size_t end, const wchar_t* complaint) {
    complaints_.emplace_back(static_cast<uint32_t>(start), complaint);
    Add(Tok::Bad, start, end);
}

const wchar_t* TokenList::Complaint(const Token& token) const {
    const auto found = std::lower_bound(
        complaints_.begin(), complaints_.end(), token.offset,
        [](const auto& complaint, uint32_t offset) { return complaint.first < offset; });
    return found != complaints_.end() && found->first == token.offset ? found->second
                                                                      : L"unknown character";
}

void TokenList::NewLine(size_t next) {
    at_ = next;
    ++line_;
    lineStart_ = next;
    blankBefore_ = true;
}

// Moves to the next token; false at the end of the text.
bool TokenList::SkipBlanks() {
    while (at_ < text_.size()) {
        const wchar_t unit = text_[at_];
        const wchar_t next = At(at_ + 1);
        if (IsBlank(unit)) {
            ++at_;
            blankBefore_ = true;
        } else if (unit == L'-' && next == L'-') {
            SkipLineComment();
        } else if (unit == L'/' && next == L'*') {
            if (!SkipBlockComment()) {
                Bad(at_, text_.size(), L"comment without end");
                return false;
            }
        } else if (unit != L'\\' || !JoinLines()) {
            return true;
        }
    }
    return false;
}

void TokenList::SkipLineComment() {
    while (at_ < text_.size() && !IsLineBreak(text_[at_]))
        ++at_;
    blankBefore_ = true;
}

bool TokenList::SkipBlockComment() {
    const size_t end = text_.find(L"*/", at_ + 2);
    if (end == std::wstring::npos)
        return false;
    for (size_t i = at_; i < end; ++i) {
        if (text_[i] == L'\n' || (text_[i] == L'\r' && At(i + 1) != L'\n'))
            NewLine(i + 1);
    }
    at_ = end + 2;
    blankBefore_ = true;
    return true;
}

// A "\" that ends its line (blanks and a comment may follow) joins it with the next one.
bool TokenList::JoinLines() {
    size_t i = at_ + 1;
    while (i < text_.size() && IsBlank(text_[i]))
        ++i;
    if (At(i) == L'-' && At(i + 1) == L'-') {
        while (i < text_.size() && !IsLineBreak(text_[i]))
            ++i;
    }
    if (i < text_.size() && !IsLineBreak(text_[i]))
        return false;
    if (i >= text_.size()) {
        at_ = i;
        return true;
    }
    NewLine(text_[i] == L'\r' && At(i + 1) == L'\n' ? i + 2 : i + 1);
    return true;
}

size_t TokenList::EndOfWord(size_t from) const {
    while (from < text_.size() && IsWordUnit(text_[from]))
        ++from;
    return from;
}

void TokenList::ReadNumber() {
    const NumberSpan span = ScanNumber(text_, at_);
    const size_t end = EndOfWord(span.end);
    if (!span.wellFormed || end != span.end)
        Bad(at_, end, L"malformed number");
    else
        Add(span.isTime ? Tok::Time : Tok::Number, at_, span.end);
}

void TokenList::ReadWord() {
    const size_t end = EndOfWord(at_);
    const Key key = FindKeyword(std::wstring_view(text_).substr(at_, end - at_));
    Add(Tok::Word, at_, end);
    tokens_.back().key = key;
}

void TokenList::ReadQuotedWord() {
    size_t end = at_ + 1;
    while (end < text_.size() && text_[end] != L'\'' && !IsLineBreak(text_[end]))
        ++end;
    if (At(end) != L'\'' || end == at_ + 1) {
        Bad(at_, end, L"quoted name without end");
        return;
    }
    Add(Tok::Word, at_, end + 1);
    tokens_.back().quoted = true;
}

void TokenList::ReadString() {
    size_t end = at_ + 1;
    while (end < text_.size() && text_[end] != L'"')
        end += text_[end] == L'\\' ? 2 : 1;
    if (end >= text_.size())
        Bad(at_, text_.size(), L"string without end");
    else
        Add(Tok::String, at_, end + 1);
}

void TokenList::ReadVerbatim() {
    const size_t end = text_.find(L'"', at_ + 2);
    if (end == std::wstring::npos)
        Bad(at_, text_.size(), L"string without end");
    else
        Add(Tok::Verbatim, at_, end + 1);
}

void TokenList::ReadHash() {
    const wchar_t next = At(at_ + 1);
    if (next == L'(' || next == L'{') {
        Add(next == L'(' ? Tok::HashParen : Tok::HashBrace, at_, at_ + 2);
        return;
    }
    if (next == L'\'') {
        const size_t end = text_.find_first_of(L"'\r\n", at_ + 2);
        if (end == std::wstring::npos || text_[end] != L'\'')
            Bad(at_, std::min(end, text_.size()), L"quoted name without end");
        else
            Add(Tok::Name, at_, end + 1);
        return;
    }
    const size_t end = EndOfWord(at_ + 1);
    if (end == at_ + 1)
        Bad(at_, end, L"name expected after #");
    else
        Add(Tok::Name, at_, end);
}

// $name, with wildcards, levels (/ and ...) and quoted parts. A single dot ends it: a property.
void TokenList::ReadPath() {
    size_t end = at_ + 1;
    for (;;) {
        const wchar_t unit = At(end);
        const wchar_t next = At(end + 1);
        if (IsWordUnit(unit) || unit == L'*' || unit == L'?') {
            ++end;
        } else if (unit == L'/' && (IsWordUnit(next) || next == L'*' || next == L'\'')) {
            ++end;
        } else if (unit == L'.' && next == L'.' && At(end + 2) == L'.') {
            end += 3;
        } else if (unit == L'\'') {
            const size_t close = text_.find_first_of(L"'\r\n", end + 1);
            if (close == std::wstring::npos || text_[close] != L'\'') {
                Bad(at_, end, L"quoted name without end");
                return;
            }
            end = close + 1;
        } else {
            break;
        }
    }
    Add(Tok::Path, at_, end);
}

void TokenList::ReadResource() {
    const size_t end = EndOfWord(at_ + 1);
    if (end == at_ + 1 || At(end) != L'~')
        Bad(at_, end, L"resource name without end");
    else
        Add(Tok::Resource, at_, end + 1);
}

void TokenList::ReadOperator() {
    const std::wstring_view rest = std::wstring_view(text_).substr(at_, 2);
    for (const Operator& op : operators) {
        const std::wstring_view spelling(op.text);
        if (rest.starts_with(spelling)) {
            Add(op.kind, at_, at_ + spelling.size());
            return;
        }
    }
    Bad(at_, at_ + 1, L"unknown character");
}

// Lets the parser see over a bracketed part: `a [1]` indexes, `move a [1,2,3]` passes a point.
void TokenList::MatchBrackets() {
    std::vector<uint32_t> open;
    for (uint32_t i = 0; i < tokens_.size(); ++i) {
        switch (tokens_[i].kind) {
        case Tok::LParen:
        case Tok::LBracket:
        case Tok::HashParen:
        case Tok::HashBrace:
            open.push_back(i);
            break;
        case Tok::RParen:
        case Tok::RBracket:
        case Tok::RBrace:
            if (!open.empty()) {
                tokens_[open.back()].partner = i;
                open.pop_back();
            }
            break;
        case Tok::Comma:
            if (!open.empty())
                tokens_[open.back()].hasComma = true;
            break;
        default:
            break;
        }
    }
}

} // namespace simhost::script
