#include "simhost/script/lexer.h"

#include <algorithm>
#include <unordered_map>

#include "simhost/script/limits.h"
#include "simhost/script/number.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

bool IsLineBreak(wchar_t unit) {
    return unit == L'\n' || unit == L'\r';
}

// A "." after one of these, without a blank, names a property: it does not start a number.
bool EndsOperand(Tok kind) {
    return (kind >= Tok::Number && kind <= Tok::Path) || kind == Tok::RParen ||
           kind == Tok::RBracket;
}

// What stands first is tried first.
constexpr struct {
    std::wstring_view text;
    Tok kind;
} operators[] = {
    {L"==", Tok::Equal},        {L"!=", Tok::NotEqual},    {L"<=", Tok::LessEqual},
    {L">=", Tok::GreaterEqual}, {L"+=", Tok::PlusAssign},  {L"-=", Tok::MinusAssign},
    {L"*=", Tok::StarAssign},   {L"/=", Tok::SlashAssign}, {L"::", Tok::DoubleColon},
    {L"#(", Tok::HashParen},    {L"(", Tok::LParen},       {L")", Tok::RParen},
    {L"[", Tok::LBracket},      {L"]", Tok::RBracket},     {L",", Tok::Comma},
    {L":", Tok::Colon},         {L".", Tok::Dot},          {L"=", Tok::Assign},
    {L"+", Tok::Plus},          {L"-", Tok::Minus},        {L"*", Tok::Star},
    {L"/", Tok::Slash},         {L"^", Tok::Caret},        {L"<", Tok::Less},
    {L">", Tok::Greater},
};

// Marks of the language that this engine does not take.
constexpr struct {
    std::wstring_view text;
    const wchar_t* complaint;
} refused[] = {
    {L"#{", L"bit arrays are not supported"},
    {L"&", L"references are not supported"},
    {L"~", L"resource names are not supported"},
    {L"?", L"the Listener's last result is not supported"},
};

Key KeyOf(std::wstring_view word) {
    static const std::unordered_map<std::wstring, Key> keys = {
        {L"and", Key::And},       {L"as", Key::As},
        {L"by", Key::By},         {L"case", Key::Case},
        {L"catch", Key::Catch},   {L"collect", Key::Collect},
        {L"do", Key::Do},         {L"continue", Key::Continue},
        {L"else", Key::Else},     {L"exit", Key::Exit},
        {L"fn", Key::Fn},         {L"function", Key::Fn},
        {L"for", Key::For},       {L"global", Key::Global},
        {L"if", Key::If},         {L"in", Key::In},
        {L"local", Key::Local},   {L"not", Key::Not},
        {L"of", Key::Of},         {L"off", Key::Off},
        {L"on", Key::On},         {L"or", Key::Or},
        {L"return", Key::Return}, {L"struct", Key::Struct},
        {L"then", Key::Then},     {L"to", Key::To},
        {L"try", Key::Try},       {L"undo", Key::Undo},
        {L"where", Key::Where},   {L"while", Key::While},
        {L"with", Key::With},
    };
    const auto found = keys.find(Lower(word));
    return found == keys.end() ? Key::None : found->second;
}

} // namespace

TokenList::TokenList(std::wstring text) : text_(std::move(text)) {
    if (text_.size() > longestScript) {
        text_.resize(1);
        AddBad(1, L"the script is too long");
    } else {
        ReadAll();
    }
    Add(Tok::End, text_.size());
    MatchBrackets();
}

void TokenList::ReadAll() {
    while (SkipBlanks()) {
        const wchar_t unit = text_[at_];
        if (unit != L';' && !IsLineBreak(unit)) {
            ReadToken();
            continue;
        }
        if (tokens_.empty() || tokens_.back().kind != Tok::Line)
            Add(Tok::Line, at_ + 1);
        else
            ++at_;
        if (unit != L';')
            StartLine(unit == L'\r' && At(at_) == L'\n' ? at_ + 1 : at_);
    }
}

void TokenList::ReadToken() {
    const wchar_t unit = text_[at_];
    const wchar_t next = At(at_ + 1);
    const bool dotNumber = unit == L'.' && IsDigit(next) &&
                           (blankBefore_ || tokens_.empty() || !EndsOperand(tokens_.back().kind));
    if (IsDigit(unit) || dotNumber)
        ReadNumber();
    else if (IsLetter(unit) || unit == L'\'')
        ReadWord(Tok::Word, at_);
    else if (unit == L'#' && (IsWordUnit(next) || next == L'\''))
        ReadWord(Tok::Name, at_ + 1);
    else if (unit == L'"')
        ReadString();
    else if (unit == L'@' && next == L'"')
        ReadVerbatim();
    else if (unit == L'$')
        ReadPath();
    else
        ReadOperator();
}

void TokenList::Add(Tok kind, size_t end) {
    const size_t start = std::min(at_, end);
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
    // A token can span lines only as a string.
    for (size_t i = start; i < end && kind != Tok::Line; ++i) {
        if (text_[i] == L'\n' || (text_[i] == L'\r' && At(i + 1) != L'\n'))
            StartLine(i + 1);
    }
    blankBefore_ = false;
    at_ = end;
}

void TokenList::AddBad(size_t end, const wchar_t* complaint) {
    complaints_.emplace_back(static_cast<uint32_t>(at_), complaint);
    Add(Tok::Bad, end);
}

const wchar_t* TokenList::Complaint(const Token& token) const {
    const auto found = std::find_if(complaints_.begin(), complaints_.end(),
                                    [&](const auto& c) { return c.first == token.offset; });
    return found == complaints_.end() ? L"unknown character" : found->second;
}

void TokenList::StartLine(size_t at) {
    at_ = at;
    ++line_;
    lineStart_ = at;
    blankBefore_ = true;
}

// Moves to the next token; false at the end of the text.
bool TokenList::SkipBlanks() {
    while (at_ < text_.size()) {
        const wchar_t unit = text_[at_];
        const wchar_t next = At(at_ + 1);
        if (IsBlank(unit)) {
            ++at_;
        } else if (unit == L'-' && next == L'-') {
            at_ = EndOfLine(at_);
        } else if (unit == L'/' && next == L'*') {
            if (!SkipBlockComment())
                return false;
        } else if (unit != L'\\' || !JoinLines()) {
            return true;
        }
        blankBefore_ = true;
    }
    return false;
}

bool TokenList::SkipBlockComment() {
    const size_t end = text_.find(L"*/", at_ + 2);
    if (end == std::wstring::npos) {
        AddBad(text_.size(), L"comment without end");
        return false;
    }
    for (size_t i = at_; i < end; ++i) {
        if (text_[i] == L'\n' || (text_[i] == L'\r' && At(i + 1) != L'\n'))
            StartLine(i + 1);
    }
    at_ = end + 2;
    return true;
}

// A "\" that ends its line (blanks and a comment may follow) joins it with the next one.
bool TokenList::JoinLines() {
    size_t i = at_ + 1;
    while (i < text_.size() && IsBlank(text_[i]))
        ++i;
    if (At(i) == L'-' && At(i + 1) == L'-')
        i = EndOfLine(i);
    if (i < text_.size() && !IsLineBreak(text_[i]))
        return false;
    if (i >= text_.size())
        at_ = i;
    else
        StartLine(text_[i] == L'\r' && At(i + 1) == L'\n' ? i + 2 : i + 1);
    return true;
}

size_t TokenList::EndOfWord(size_t from) const {
    while (from < text_.size() && IsWordUnit(text_[from]))
        ++from;
    return from;
}

size_t TokenList::EndOfLine(size_t from) const {
    return std::min(text_.find_first_of(L"\r\n", from), text_.size());
}

void TokenList::ReadNumber() {
    const auto number = FindNumber(std::wstring_view(text_).substr(at_));
    const size_t numberEnd = at_ + (number ? number->length : 1);
    const size_t end = EndOfWord(numberEnd);
    if (!number || end != numberEnd)
        AddBad(end, L"malformed number");
    else
        Add(Tok::Number, end);
}

// An identifier or a name, bare or in quotes; `from`: behind the name's mark.
void TokenList::ReadWord(Tok kind, size_t from) {
    if (At(from) != L'\'') {
        const size_t end = EndOfWord(from);
        Add(kind, end);
        if (kind == Tok::Word)
            tokens_.back().key = KeyOf(Text(tokens_.back()));
        return;
    }
    const size_t end = std::min(text_.find_first_of(L"'\r\n", from + 1), text_.size());
    if (At(end) != L'\'' || end == from + 1)
        AddBad(end, L"quoted name without end");
    else
        Add(kind, end + 1);
}

void TokenList::ReadString() {
    size_t end = at_ + 1;
    while (end < text_.size() && text_[end] != L'"')
        end += text_[end] == L'\\' ? 2 : 1;
    if (end >= text_.size())
        AddBad(text_.size(), L"string without end");
    else
        Add(Tok::String, end + 1);
}

void TokenList::ReadVerbatim() {
    const size_t end = text_.find(L'"', at_ + 2);
    if (end == std::wstring::npos)
        AddBad(text_.size(), L"string without end");
    else
        Add(Tok::Verbatim, end + 1);
}

// $name, with wildcards, or quoted. A dot ends it: a property.
void TokenList::ReadPath() {
    size_t end = at_ + 1;
    if (At(end) == L'\'') {
        ReadWord(Tok::Path, end);
        return;
    }
    while (IsWordUnit(At(end)) || At(end) == L'*' || At(end) == L'?')
        ++end;
    if (end == at_ + 1)
        AddBad(end, L"the selection as $ is not supported");
    else
        Add(Tok::Path, end);
}

void TokenList::ReadOperator() {
    const std::wstring_view rest = std::wstring_view(text_).substr(at_, 2);
    for (const auto& op : operators) {
        if (rest.starts_with(op.text)) {
            Add(op.kind, at_ + op.text.size());
            return;
        }
    }
    for (const auto& mark : refused) {
        if (rest.starts_with(mark.text)) {
            AddBad(at_ + mark.text.size(), mark.complaint);
            return;
        }
    }
    AddBad(at_ + 1, L"unknown character");
}

// Lets the parser see over a bracketed part: `a [1]` indexes, `move a [1,2,3]` passes a point.
void TokenList::MatchBrackets() {
    std::vector<uint32_t> open;
    for (uint32_t i = 0; i < tokens_.size(); ++i) {
        switch (tokens_[i].kind) {
        case Tok::LParen:
        case Tok::LBracket:
        case Tok::HashParen:
            open.push_back(i);
            break;
        case Tok::RParen:
        case Tok::RBracket:
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
