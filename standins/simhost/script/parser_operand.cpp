// Operands and calls: where a newline or a blank changes what a script means.
#include "simhost/script/number.h"
#include "simhost/script/objects.h"
#include "simhost/script/operators.h"
#include "simhost/script/parser.h"
#include "simhost/script/text.h"

namespace simhost::script {

// Before a call's name the minus takes the call, among arguments just the operand.
ExprPtr Parser::ParseMinus(bool beforeCall) {
    const Level level(*this);
    auto minus = New<MinusExpr>(Where(Take()));
    SkipLines();
    minus->operand = beforeCall ? ParseCall() : ParseOperand();
    if (auto* literal = dynamic_cast<LiteralExpr*>(minus->operand.get());
        literal && literal->value.IsNumber()) {
        literal->value = Negate(literal->value);
        return std::move(minus->operand);
    }
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
    for (;;) {
        if (IsKeywordArgument()) {
            std::wstring name = Lower(TakeWord(L"<name>"));
            Take();
            SkipLines();
            call->keywords.emplace_back(std::move(name), ParseOperand());
        } else if (StartsArgument()) {
            call->arguments.push_back(ParseOperand());
        } else {
            break;
        }
    }
    const auto* variable = dynamic_cast<const VariableExpr*>(callee.get());
    const auto* block = dynamic_cast<const BlockExpr*>(
        call->arguments.size() == 1 ? call->arguments[0].get() : nullptr);
    if (block && block->items.empty())
        call->arguments.clear();
    if (inCatch_ && !call->arguments.empty() && variable && EqualNoCase(variable->name, L"throw")) {
        throw ScriptError(
            ScriptError::Kind::Compile,
            L"Compile error: only throws without arguments are permitted in catch expressions",
            call->where);
    }
    call->callee = std::move(callee);
    return call;
}

// `name:`. Between labels of `case`, nothing may stand between the two.
bool Parser::IsKeywordArgument() const {
    const Token& colon = Peek(1);
    if (!PeekIs(Tok::Word) || colon.kind != Tok::Colon)
        return false;
    return !(inCase_ && (colon.blankBefore || IsCaseLabel()));
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
        return Peek(1).kind == Tok::Colon && (EqualNoCase(list_.Text(token), L"default") ||
                                              token.key == Key::On || token.key == Key::Off);
    case Tok::LParen:
        return token.partner != 0 && tokens_[token.partner + 1].kind == Tok::Colon;
    default:
        return false;
    }
}

bool Parser::StartsArgument() const {
    const Token& token = Peek();
    if (inCase_ && IsCaseLabel())
        return false;
    switch (token.kind) {
    case Tok::Number:
    case Tok::String:
    case Tok::Verbatim:
    case Tok::Name:
    case Tok::Path:
    case Tok::LParen:
    case Tok::HashParen:
    case Tok::LBracket: // a point; an index was taken with the operand before it
    case Tok::DoubleColon:
        return true;
    case Tok::Minus:
        return token.blankBefore && !token.blankAfter;
    case Tok::Word:
        return token.key == Key::None || token.key == Key::On || token.key == Key::Off;
    default:
        return false;
    }
}

ExprPtr Parser::ParseOperand() {
    return PeekIs(Tok::Minus) ? ParseMinus(false) : ParseSuffixes(ParsePrimary());
}

ExprPtr Parser::ParsePrimary() {
    const Token& token = Peek();
    const Position where = Where(token);
    switch (token.kind) {
    case Tok::Number:
        return New<LiteralExpr>(where, FindNumber(list_.Text(Take()))->value);
    case Tok::String:
    case Tok::Verbatim:
        return New<LiteralExpr>(where, MakeString(list_.StringValue(Take())));
    case Tok::Name:
        return New<LiteralExpr>(where, MakeName(list_.WordValue(Take())));
    case Tok::Word:
        return ParseWordOperand();
    case Tok::Path:
        return New<PathExpr>(where, list_.WordValue(Take()));
    case Tok::LParen:
        return ParseBlock();
    case Tok::HashParen: {
        auto array = New<ArrayExpr>(where);
        array->items = ParseList(Tok::RParen, L", or )");
        return array;
    }
    case Tok::LBracket:
        return ParsePoint();
    case Tok::DoubleColon: {
        Take();
        const std::wstring name = TakeWord(L"name");
        return New<VariableExpr>(where, name, scopes_.FindGlobal(name));
    }
    default:
        Fail(L"<factor>");
    }
}

ExprPtr Parser::ParseWordOperand() {
    const Token& token = Peek();
    const Position where = Where(token);
    if (AcceptKey(Key::On) || AcceptKey(Key::Off))
        return New<LiteralExpr>(where, Value::Bool(token.key == Key::On));
    std::wstring name = TakeNewName(L"<factor>");
    const Scopes::Use use = PeekIs(Tok::Assign) ? Scopes::Use::Assign : Scopes::Use::Read;
    const Binding binding = scopes_.Find(name, where, use);
    return New<VariableExpr>(where, std::move(name), binding);
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
            const bool inCase = std::exchange(inCase_, false);
            index->index = ParseNext();
            inCase_ = inCase;
            SkipLines();
            Expect(Tok::RBracket, L"]");
            operand = std::move(index);
        } else {
            return operand;
        }
    }
}

ExprPtr Parser::ParseBlock() {
    auto block = New<BlockExpr>(Where(Take()));
    const bool inCase = std::exchange(inCase_, false);
    scopes_.BeginBlock();
    for (SkipLines(); !PeekIs(Tok::RParen); SkipLines()) {
        block->items.push_back(ParseExpression());
        RequireSeparator();
    }
    Take();
    block->slots = scopes_.EndBlock();
    inCase_ = inCase;
    return block;
}

// Expressions with commas between them, and the brackets around them.
ExprList Parser::ParseList(Tok closing, const wchar_t* what) {
    Take();
    ExprList items;
    const bool inCase = std::exchange(inCase_, false);
    SkipLines();
    if (!PeekIs(closing)) {
        do {
            items.push_back(ParseNext());
            SkipLines();
        } while (Accept(Tok::Comma));
    }
    Expect(closing, what);
    inCase_ = inCase;
    return items;
}

ExprPtr Parser::ParsePoint() {
    auto point = New<PointExpr>(Where(Peek()));
    point->items = ParseList(Tok::RBracket, L", or ]");
    if (point->items.size() < 2 || point->items.size() > 4)
        Fail(point->where, L"a point has two to four components");
    return point;
}

} // namespace simhost::script
