#include "simhost/script/parser.h"

#include <algorithm>

namespace simhost::script {
namespace {

std::optional<BinaryOp> CompareOp(Tok kind) {
    switch (kind) {
    case Tok::Equal:
        return BinaryOp::Equal;
    case Tok::NotEqual:
        return BinaryOp::NotEqual;
    case Tok::Less:
        return BinaryOp::Less;
    case Tok::Greater:
        return BinaryOp::Greater;
    case Tok::LessEqual:
        return BinaryOp::LessEqual;
    case Tok::GreaterEqual:
        return BinaryOp::GreaterEqual;
    default:
        return std::nullopt;
    }
}

std::optional<BinaryOp> ArithmeticOp(Tok kind) {
    switch (kind) {
    case Tok::Plus:
    case Tok::PlusAssign:
        return BinaryOp::Add;
    case Tok::Minus:
    case Tok::MinusAssign:
        return BinaryOp::Subtract;
    case Tok::Star:
    case Tok::StarAssign:
        return BinaryOp::Multiply;
    case Tok::Slash:
    case Tok::SlashAssign:
        return BinaryOp::Divide;
    default:
        return std::nullopt;
    }
}

// The operators of the three levels that group from the left, loosest first.
std::optional<BinaryOp> OpOfLevel(int level, Tok kind) {
    if (level == 0)
        return CompareOp(kind);
    const bool sum = kind == Tok::Plus || kind == Tok::Minus;
    const bool product = kind == Tok::Star || kind == Tok::Slash;
    return (level == 1 ? sum : product) ? ArithmeticOp(kind) : std::nullopt;
}

} // namespace

Parser::Parser(const TokenList& tokens, GlobalTable& globals)
    : list_(tokens), tokens_(tokens.Tokens()), scopes_(globals) {}

Parser::Level::Level(Parser& parser) : parser_(parser) {
    if (++parser.depth_ > maxNesting || parser.stack_.Exhausted()) {
        --parser.depth_;
        Fail(Where(parser.Peek()), L"expressions are nested too deeply");
    }
}

ExprPtr Parser::Next() {
    SkipLines();
    if (PeekIs(Tok::End))
        return nullptr;
    nodes_ = 0;
    scopes_.Reset();
    ExprPtr expr = ParseExpression();
    RequireSeparator();
    return expr;
}

const Token& Parser::Peek(size_t ahead) const {
    return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

const Token& Parser::Take() {
    const Token& token = Peek();
    if (token.kind != Tok::End)
        ++at_;
    return token;
}

bool Parser::Accept(Tok kind) {
    if (!PeekIs(kind))
        return false;
    ++at_;
    return true;
}

bool Parser::AcceptKey(Key key) {
    if (!PeekKey(key))
        return false;
    ++at_;
    return true;
}

void Parser::Expect(Tok kind, const wchar_t* what) {
    if (!Accept(kind))
        Fail(what);
}

void Parser::ExpectKey(Key key, const wchar_t* what) {
    if (!AcceptKey(key))
        Fail(what);
}

void Parser::SkipLines() {
    while (PeekIs(Tok::Line))
        ++at_;
}

// `else`, `catch` and the like may stand on a line of their own.
bool Parser::AcceptKeyAfterLines(Key key) {
    const size_t start = at_;
    SkipLines();
    if (AcceptKey(key))
        return true;
    at_ = start;
    return false;
}

void Parser::Fail(Position where, std::wstring message) {
    throw ScriptError(ScriptError::Kind::Syntax, L"Syntax error: " + std::move(message), where);
}

void Parser::Fail(const wchar_t* expected) const {
    const Token& token = Peek();
    if (token.kind == Tok::Bad)
        Fail(Where(token), list_.Complaint(token));
    std::wstring found = L"end of script";
    if (token.kind == Tok::Line)
        found = L"end of line";
    else if (token.kind != Tok::End)
        found = list_.Text(token).substr(0, 60);
    Fail(Where(token), L"at " + found + L", expected " + expected);
}

std::wstring Parser::TakeWord(const wchar_t* what) {
    if (!PeekIs(Tok::Word))
        Fail(what);
    return list_.WordValue(Take());
}

// The name of something that the script defines: no reserved word.
std::wstring Parser::TakeNewName(const wchar_t* what) {
    if (!PeekKey(Key::None))
        Fail(what);
    return TakeWord(what);
}

void Parser::RequireSeparator() {
    if (!PeekIs(Tok::Line) && !PeekIs(Tok::End) && !PeekIs(Tok::RParen))
        Fail(L"end of expression");
}

ExprPtr Parser::ParseNext() {
    SkipLines();
    return ParseExpression();
}

ExprPtr Parser::ParseExpression() {
    const Level level(*this);
    if (ExprPtr expr = ParseKeyword(Peek().key))
        return expr;
    return ParseAssignment();
}

// Constructs that a reserved word begins; null when it begins an operand.
ExprPtr Parser::ParseKeyword(Key key) {
    switch (key) {
    case Key::If:
        return ParseIf();
    case Key::For:
        return ParseFor();
    case Key::While:
        return ParseWhile(false);
    case Key::Do:
        return ParseWhile(true);
    case Key::Case:
        return ParseCase();
    case Key::Try:
        return ParseTry();
    case Key::Return:
        return ParseJump(JumpKind::Return);
    case Key::Exit:
        return ParseJump(JumpKind::Exit);
    case Key::Continue:
        return ParseJump(JumpKind::Continue);
    case Key::Local:
    case Key::Global:
        return ParseDeclaration();
    case Key::Fn:
        return ParseFunction();
    case Key::Struct:
        return ParseStruct();
    case Key::With:
    case Key::Undo:
        return ParseUndo();
    default:
        return nullptr;
    }
}

ExprPtr Parser::ParseAssignment() {
    ExprPtr target = ParseLogical(false);
    const Tok kind = Peek().kind;
    if (kind < Tok::Assign || kind > Tok::SlashAssign)
        return target;
    if (!target->IsPlace())
        Fail(L"end of expression");
    const auto op = ArithmeticOp(kind);
    auto assign = New<AssignExpr>(Where(Take()));
    assign->target = std::move(target);
    assign->compound = op.has_value();
    assign->op = op.value_or(BinaryOp::Add);
    assign->value = ParseNext();
    return assign;
}

ExprPtr Parser::ParseLogical(bool isAnd) {
    const Key key = isAnd ? Key::And : Key::Or;
    const auto operand = [&] { return isAnd ? ParseNot() : ParseLogical(true); };
    ExprPtr first = operand();
    if (!PeekKey(key))
        return first;
    auto logical = New<LogicalExpr>(Where(Peek()));
    logical->isAnd = isAnd;
    logical->operands.push_back(std::move(first));
    while (AcceptKey(key)) {
        SkipLines();
        logical->operands.push_back(operand());
    }
    return logical;
}

ExprPtr Parser::ParseNot() {
    if (!PeekKey(Key::Not))
        return ParseChain(0);
    const Level level(*this);
    auto negation = New<NotExpr>(Where(Take()));
    SkipLines();
    negation->operand = ParseNot();
    return negation;
}

ExprPtr Parser::ParseChain(int level) {
    const auto operand = [&] { return level == 2 ? ParsePower() : ParseChain(level + 1); };
    ExprPtr first = operand();
    if (!OpOfLevel(level, Peek().kind))
        return first;
    auto chain = New<ChainExpr>(Where(Peek()));
    chain->first = std::move(first);
    while (const auto op = OpOfLevel(level, Peek().kind)) {
        ++at_;
        SkipLines();
        chain->rest.emplace_back(*op, operand());
    }
    return chain;
}

ExprPtr Parser::ParsePower() {
    ExprPtr base = ParseConvert();
    if (!PeekIs(Tok::Caret))
        return base;
    const Level level(*this);
    auto chain = New<ChainExpr>(Where(Take()));
    chain->first = std::move(base);
    SkipLines();
    chain->rest.emplace_back(BinaryOp::Power, ParsePower());
    return chain;
}

ExprPtr Parser::ParseConvert() {
    ExprPtr value = ParseCall();
    if (!PeekKey(Key::As))
        return value;
    auto convert = New<ConvertExpr>(Where(Peek()));
    convert->value = std::move(value);
    while (AcceptKey(Key::As)) {
        SkipLines();
        convert->classes.push_back(ParseOperand());
    }
    return convert;
}

} // namespace simhost::script
