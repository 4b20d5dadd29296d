// Operands and calls: where a newline or a blank changes what a script means.
#include "simhost/script/number.h"
#include "simhost/script/objects.h"
#include "simhost/script/parser.h"
#include "simhost/script/text.h"

namespace simhost::script {

namespace {

bool IsEmptyBlock(const Expr& expr) {
    return expr.kind == ExprKind::Block && static_cast<const BlockExpr&>(expr).items.empty();
}

// A number literal with its sign turned; undefined for anything else.
Value Negated(const Value& value) {
    switch (value.GetType()) {
    case Type::Integer:
        return Value::Integer(static_cast<int32_t>(-value.AsWhole()));
    case Type::Integer64:
        if (value.AsWhole() == int64_t{1} << 31)
            return Value::Integer(INT32_MIN);
        return Value::Integer64(static_cast<int64_t>(0 - static_cast<uint64_t>(value.AsWhole())));
    case Type::IntegerPtr:
        return Value::IntegerPtr(static_cast<int64_t>(0 - static_cast<uint64_t>(value.AsWhole())));
    case Type::Float:
        return Value::Float(static_cast<float>(-value.AsReal()));
    case Type::Double:
        return Value::Double(-value.AsReal());
    case Type::Time:
        return Value::Time(-value.AsReal());
    default:
        return {};
    }
}

} // namespace

// Before a call's name the minus takes the call, among arguments just the operand.
ExprPtr Parser::ParseMinus(bool beforeCall) {
    const Level level(*this);
    auto minus = New<UnaryExpr>(Where(Take()));
    SkipLines();
    ExprPtr operand = beforeCall ? ParseCall() : ParseOperand();
    if (operand->kind == ExprKind::Literal) {
        auto& literal = static_cast<LiteralExpr&>(*operand);
        if (Value negated = Negated(literal.value); !negated.IsUndefined()) {
            literal.value = std::move(negated);
            return operand;
        }
    }
    minus->operand = std::move(operand);
    return minus;
}

// An operand, and the arguments behind it on the same line.
ExprPtr Parser::ParseCall() {
    if (PeekIs(Tok::Minus))
        return ParseMinus(true);
    ExprPtr callee = ParseOperand();
    if (!IsKeywordArgument() && !StartsArgument())
        return callee;
    auto call = New<CallExpr>(callee->where);
    call->callee = std::move(callee);
    ParseArguments(*call);
    return call;
}

void Parser::ParseArguments(CallExpr& call) {
    ParseKeywordArguments(call.keywords, call.arguments);
    if (call.arguments.size() == 1 && IsEmptyBlock(*call.arguments[0]))
        call.arguments.clear();
}

void Parser::ParseKeywordArguments(std::vector<NamedExpr>& keywords, ExprList& arguments) {
    for (;;) {
        if (IsKeywordArgument())
            keywords.push_back(ParseKeywordArgument());
        else if (StartsArgument())
            arguments.push_back(ParseOperand());
        else
            return;
    }
}

// `name:`. Between labels of `case`, nothing may stand between the two.
bool Parser::IsKeywordArgument() const {
    const Token& colon = Peek(1);
    if (!PeekIs(Tok::Word) || colon.kind != Tok::Colon)
        return false;
    return !(inCase_ && (colon.blankBefore || IsCaseLabel()));
}

NamedExpr Parser::ParseKeywordArgument() {
    NamedExpr argument;
    argument.name = list_.WordValue(Take());
    Take();
    SkipLines();
    argument.value = ParseOperand();
    return argument;
}

// Inside `case`, a literal with a colon behind it begins the next item.
bool Parser::IsCaseLabel() const {
    const Token& token = Peek();
    switch (token.kind) {
    case Tok::Number:
    case Tok::String:
    case Tok::Verbatim:
    case Tok::Name:
        return Peek(1).kind == Tok::Colon;
    case Tok::Minus:
        return Peek(1).kind == Tok::Number && Peek(2).kind == Tok::Colon;
    case Tok::Word:
        return Peek(1).kind == Tok::Colon &&
               (LowerText(token) == L"default" || token.key == Key::On || token.key == Key::Off);
    case Tok::LParen:
        return token.partner != 0 && tokens_[token.partner + 1].kind == Tok::Colon;
    default:
        return false;
    }
}

bool Parser::StartsArgument() const {
    return !(inCase_ && IsCaseLabel()) && StartsOperand(0);
}

bool Parser::StartsOperand(size_t ahead) const {
    const Token& token = Peek(ahead);
    switch (token.kind) {
    case Tok::Number:
    case Tok::Time:
    case Tok::String:
    case Tok::Verbatim:
    case Tok::Name:
    case Tok::Path:
    case Tok::Resource:
    case Tok::LParen:
    case Tok::HashParen:
    case Tok::HashBrace:
    case Tok::LBracket: // a point; an index was taken with the operand before it
    case Tok::DoubleColon:
    case Tok::Ampersand:
    case Tok::Question:
        return true;
    case Tok::Minus:
        return token.blankBefore && !token.blankAfter;
    case Tok::Word:
        break;
    default:
        return false;
    }
    switch (token.key) {
    case Key::None:
    case Key::On:
    case Key::Off:
    case Key::About:
        return true;
    case Key::Rollout:
    case Key::MacroScript:
        return !IsDefinitionStart(ahead);
    default:
        return IsSoftKeyword(token.key) && !IsDefinitionStart(ahead);
    }
}

ExprPtr Parser::ParseOperand() {
    switch (Peek().kind) {
    case Tok::Minus:
        return ParseMinus(false);
    case Tok::Ampersand:
        return ParsePrefixed(UnaryOp::Reference);
    case Tok::Star:
        // A product cannot go on in the next line.
        if (Peek().blankAfter)
            Fail(L"<factor>");
        return ParsePrefixed(UnaryOp::Dereference);
    default:
        return ParseSuffixes(ParsePrimary());
    }
}

ExprPtr Parser::ParsePrefixed(UnaryOp op) {
    const Level level(*this);
    auto prefixed = New<UnaryExpr>(Where(Take()));
    prefixed->op = op;
    prefixed->operand = ParseOperand();
    const ExprKind kind = prefixed->operand->kind;
    if (op == UnaryOp::Reference && kind != ExprKind::Variable && kind != ExprKind::Property &&
        kind != ExprKind::Index && kind != ExprKind::Path)
        Fail(prefixed->where, L"& needs a variable, a property or an index");
    return prefixed;
}

ExprPtr Parser::ParsePrimary() {
    const Token& token = Peek();
    const Position where = Where(token);
    switch (token.kind) {
    case Tok::Number:
        return New<LiteralExpr>(where, NumberLiteral(list_.Text(Take())));
    case Tok::Time:
        return New<LiteralExpr>(where, TimeLiteral(list_.Text(Take()), frameRate_));
    case Tok::String:
    case Tok::Verbatim:
        return New<LiteralExpr>(where, MakeString(list_.StringValue(Take())));
    case Tok::Name:
        return New<LiteralExpr>(where, MakeName(list_.WordValue(Take())));
    case Tok::Word:
        return ParseWordOperand();
    case Tok::Path: {
        auto path = New<PathExpr>(where);
        path->pattern = list_.Text(Take()).substr(1);
        return path;
    }
    case Tok::LParen:
        return ParseBlock(false);
    case Tok::HashParen:
        return ParseArray();
    case Tok::HashBrace:
        return ParseBitArray();
    case Tok::LBracket:
        return ParsePoint();
    case Tok::DoubleColon: {
        Take();
        auto variable = New<VariableExpr>(where);
        variable->global = true;
        variable->name = TakeWord(L"name");
        return variable;
    }
    case Tok::Resource:
    case Tok::Question: {
        auto unsupported = New<UnsupportedExpr>(where);
        unsupported->what = list_.Text(Take());
        return unsupported;
    }
    default:
        Fail(L"<factor>");
    }
}

ExprPtr Parser::ParseWordOperand() {
    const Token& token = Peek();
    const Position where = Where(token);
    switch (token.key) {
    case Key::On:
    case Key::Off:
        Take();
        return New<LiteralExpr>(where, Value::Bool(token.key == Key::On));
    case Key::None:
    case Key::Throw:
    case Key::About:
    case Key::Rollout:
    case Key::MacroScript:
        break;
    default:
        if (!IsSoftKeyword(token.key))
            Fail(L"<factor>");
    }
    auto variable = New<VariableExpr>(where);
    variable->name = list_.WordValue(Take());
    return variable;
}

// .name and [index], as many as there are. `[a,b]` is no index but the next argument.
ExprPtr Parser::ParseSuffixes(ExprPtr operand) {
    for (size_t count = 0;; ++count) {
        if (count > maxChain)
            Fail(Where(Peek()), L"the expression is too long");
        if (PeekIs(Tok::Dot)) {
            auto property = New<PropertyExpr>(Where(Take()));
            SkipLines();
            property->name = TakeWord(L"<name>");
            property->object = std::move(operand);
            operand = std::move(property);
        } else if (PeekIs(Tok::LBracket) && !Peek().hasComma) {
            auto index = New<IndexExpr>(Where(Take()));
            index->object = std::move(operand);
            SkipLines();
            const bool inCase = std::exchange(inCase_, false);
            index->index = ParseExpression();
            inCase_ = inCase;
            SkipLines();
            Expect(Tok::RBracket, L"]");
            operand = std::move(index);
        } else {
            return operand;
        }
    }
}

std::unique_ptr<BlockExpr> Parser::ParseBlock(bool handlers) {
    auto block = New<BlockExpr>(Where(Peek()));
    Expect(Tok::LParen, L"(");
    const bool inCase = std::exchange(inCase_, false);
    for (SkipLines(); !PeekIs(Tok::RParen); SkipLines()) {
        const bool isHandler = handlers && PeekKey(Key::On) && Peek(1).kind == Tok::Word;
        block->items.push_back(isHandler ? ParseHandler() : ParseExpression());
        RequireSeparator();
    }
    Take();
    inCase_ = inCase;
    return block;
}

ExprPtr Parser::ParseArray() {
    auto array = New<ListExpr>(Where(Peek()), ExprKind::Array);
    Take();
    const bool inCase = std::exchange(inCase_, false);
    SkipLines();
    if (!PeekIs(Tok::RParen)) {
        do {
            SkipLines();
            array->items.push_back(ParseExpression());
            SkipLines();
        } while (Accept(Tok::Comma));
    }
    Expect(Tok::RParen, L", or )");
    inCase_ = inCase;
    return array;
}

ExprPtr Parser::ParseBitArray() {
    auto bits = New<BitArrayExpr>(Where(Take()));
    const bool inCase = std::exchange(inCase_, false);
    SkipLines();
    if (!PeekIs(Tok::RBrace)) {
        do {
            SkipLines();
            ExprPtr from = ParseExpression();
            SkipLines();
            ExprPtr to;
            if (Accept(Tok::DotDot)) {
                SkipLines();
                to = ParseExpression();
                SkipLines();
            }
            bits->ranges.emplace_back(std::move(from), std::move(to));
        } while (Accept(Tok::Comma));
    }
    Expect(Tok::RBrace, L", or }");
    inCase_ = inCase;
    return bits;
}

ExprPtr Parser::ParsePoint() {
    auto point = New<ListExpr>(Where(Take()), ExprKind::Point);
    const bool inCase = std::exchange(inCase_, false);
    do {
        SkipLines();
        point->items.push_back(ParseExpression());
        SkipLines();
    } while (point->items.size() < 4 && Accept(Tok::Comma));
    if (point->items.size() < 2)
        Fail(L",");
    Expect(Tok::RBracket, L"]");
    inCase_ = inCase;
    return point;
}

} // namespace simhost::script
