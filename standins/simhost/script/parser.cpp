#include "simhost/script/parser.h"

#include "simhost/script/text.h"

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

// The operators of the three levels that group from the left, loosest first.
std::optional<BinaryOp> OpOfLevel(int level, Tok kind) {
    if (level == 0)
        return CompareOp(kind);
    if (level == 1) {
        if (kind == Tok::Plus)
            return BinaryOp::Add;
        return kind == Tok::Minus ? std::optional(BinaryOp::Subtract) : std::nullopt;
    }
    if (kind == Tok::Star)
        return BinaryOp::Multiply;
    return kind == Tok::Slash ? std::optional(BinaryOp::Divide) : std::nullopt;
}

bool IsAssignable(const Expr& expr) {
    switch (expr.kind) {
    case ExprKind::Variable:
    case ExprKind::Property:
    case ExprKind::Index:
        return true;
    case ExprKind::Unary:
        return static_cast<const UnaryExpr&>(expr).op == UnaryOp::Dereference;
    default:
        return false;
    }
}

} // namespace

Parser::Parser(const TokenList& tokens, int frameRate)
    : list_(tokens), tokens_(tokens.Tokens()), frameRate_(frameRate) {}

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

size_t Parser::LinesAhead() const {
    size_t ahead = 0;
    while (Peek(ahead).kind == Tok::Line)
        ++ahead;
    return ahead;
}

// `else` and `catch` may stand on a line of their own.
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

std::wstring Parser::LowerText(const Token& token) const {
    return Lower(list_.Text(token));
}

std::wstring Parser::TakeWord(const wchar_t* what) {
    if (!PeekIs(Tok::Word))
        Fail(what);
    return list_.WordValue(Take());
}

// Definitions begin with a reserved word and a name, and something that only a definition has
// behind its name; else it is an ordinary word.
bool Parser::IsDefinitionStart(size_t ahead) const {
    switch (Peek(ahead).key) {
    case Key::Rollout:
    case Key::Utility:
    case Key::RcMenu:
    case Key::Tool:
    case Key::Plugin:
    case Key::MacroScript:
    case Key::Attributes:
        break;
    default:
        return false;
    }
    const Token& name = Peek(ahead + 1);
    if (name.kind == Tok::String || name.kind == Tok::Verbatim)
        return true;
    if (name.kind != Tok::Word)
        return false;
    const Token& behind = Peek(ahead + 2);
    switch (behind.kind) {
    case Tok::LParen:
    case Tok::String:
    case Tok::Verbatim:
    case Tok::Resource:
        return true;
    case Tok::Line: // the bracket or a keyword argument may begin the next line
        return Peek(ahead + 3).kind == Tok::LParen || Peek(ahead + 4).kind == Tok::Colon;
    case Tok::Word: // a plug-in's name, behind its kind
        return Peek(ahead + 3).kind == Tok::Colon || Peek(ahead).key == Key::Plugin;
    default:
        return false;
    }
}

bool Parser::StartsStatement(const Token& token) const {
    switch (token.key) {
    case Key::If:
    case Key::For:
    case Key::While:
    case Key::Do:
    case Key::Try:
    case Key::Case:
    case Key::Local:
    case Key::Global:
    case Key::Persistent:
    case Key::Fn:
    case Key::Mapped:
    case Key::Struct:
    case Key::Return:
    case Key::On:
    case Key::With:
    case Key::Undo:
        return true;
    default:
        return IsDefinitionStart();
    }
}

// Behind an expression: the end of its line, or the start of a statement that nothing could
// confuse with a continuation. A `catch()` always needs the separator, a definition never.
void Parser::RequireSeparator() {
    if (PeekIs(Tok::Line) || PeekIs(Tok::End) || PeekIs(Tok::RParen))
        return;
    if (at_ == definitionEnd_ && PeekIs(Tok::Word))
        return;
    if (at_ == bareCatchEnd_ || !StartsStatement(Peek()))
        Fail(L"end of expression");
}

ExprPtr Parser::ParseExpression() {
    const Level level(*this);
    const Token& token = Peek();
    if (token.kind == Tok::Word && token.key != Key::None) {
        if (ExprPtr expr = ParseKeyword(token.key))
            return expr;
    }
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
        return ParseWhile();
    case Key::Do:
        return ParseDo();
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
    case Key::Persistent:
        return ParseDeclaration();
    case Key::Fn:
    case Key::Mapped:
        return ParseFunction();
    case Key::Struct:
        return ParseStruct();
    case Key::With:
    case Key::Undo:
    case Key::Animate:
    case Key::At:
    case Key::In:
    case Key::Coordsys:
        return ParseContext();
    case Key::About: // also a popular name for a dialog
        return StartsOperand(1) ? ParseContext() : nullptr;
    case Key::Set:
        return Peek(1).kind == Tok::Word ? ParseSet() : nullptr;
    case Key::When:
        return ParseWhen();
    case Key::Max:
        return ParseMaxCommand();
    default:
        return IsDefinitionStart() ? ParseDefinition() : nullptr;
    }
}

ExprPtr Parser::ParseAssignment() {
    ExprPtr target = ParseLogical(false);
    std::optional<BinaryOp> op;
    switch (Peek().kind) {
    case Tok::Assign:
        break;
    case Tok::PlusAssign:
        op = BinaryOp::Add;
        break;
    case Tok::MinusAssign:
        op = BinaryOp::Subtract;
        break;
    case Tok::StarAssign:
        op = BinaryOp::Multiply;
        break;
    case Tok::SlashAssign:
        op = BinaryOp::Divide;
        break;
    default:
        return target;
    }
    if (!IsAssignable(*target))
        Fail(L"end of expression");
    auto assign = New<AssignExpr>(Where(Take()));
    assign->target = std::move(target);
    assign->compound = op.has_value();
    assign->op = op.value_or(BinaryOp::Add);
    SkipLines();
    assign->value = ParseExpression();
    return assign;
}

ExprPtr Parser::ParseLogical(bool isAnd) {
    const Key key = isAnd ? Key::And : Key::Or;
    ExprPtr first = isAnd ? ParseNot() : ParseLogical(true);
    if (!PeekKey(key))
        return first;
    auto logical = New<LogicalExpr>(Where(Peek()));
    logical->isAnd = isAnd;
    logical->operands.push_back(std::move(first));
    while (AcceptKey(key)) {
        SkipLines();
        logical->operands.push_back(isAnd ? ParseNot() : ParseLogical(true));
    }
    return logical;
}

ExprPtr Parser::ParseNot() {
    if (!PeekKey(Key::Not))
        return ParseChain(0);
    const Level level(*this);
    auto negation = New<UnaryExpr>(Where(Take()));
    negation->op = UnaryOp::Not;
    SkipLines();
    negation->operand = ParseNot();
    return negation;
}

ExprPtr Parser::ParseChain(int level) {
    const auto operand = [this, level] {
        return level == 2 ? ParsePower() : ParseChain(level + 1);
    };
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
