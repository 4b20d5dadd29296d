// Conditions, loops, jumps, error handling and contexts.
#include <algorithm>

#include "simhost/script/number.h"
#include "simhost/script/objects.h"
#include "simhost/script/parser.h"
#include "simhost/script/text.h"

namespace simhost::script {

// if c then a [else b] | if c do a. A chain of `else if` is one node.
ExprPtr Parser::ParseIf() {
    auto result = New<IfExpr>(Where(Take()));
    for (;;) {
        SkipLines();
        ExprPtr condition = ParseExpression();
        SkipLines();
        const bool isDo = PeekKey(Key::Do);
        if (!isDo && !PeekKey(Key::Then))
            Fail(L"then or do");
        Take();
        SkipLines();
        ExprPtr value = ParseExpression();
        result->branches.emplace_back(std::move(condition), std::move(value));
        if (isDo || !AcceptKeyAfterLines(Key::Else))
            return result;
        SkipLines();
        if (!PeekKey(Key::If)) {
            result->otherwise = ParseExpression();
            return result;
        }
        Take();
    }
}

ExprPtr Parser::ParseFor() {
    auto loop = New<ForExpr>(Where(Take()));
    SkipLines();
    do {
        SkipLines();
        loop->names.push_back(TakeWord(L"<name>"));
        SkipLines();
    } while (loop->names.size() < 3 && Accept(Tok::Comma));
    if (!AcceptKey(Key::In) && !Accept(Tok::Assign))
        Fail(L"= or in");
    SkipLines();
    loop->first = ParseExpression();
    SkipLines();
    if (AcceptKey(Key::To)) {
        SkipLines();
        loop->last = ParseExpression();
        SkipLines();
        if (AcceptKey(Key::By)) {
            SkipLines();
            loop->step = ParseExpression();
            SkipLines();
        }
    }
    while (PeekKey(Key::While) || PeekKey(Key::Where)) {
        ExprPtr& filter = PeekKey(Key::While) ? loop->whileTrue : loop->where_;
        if (filter)
            Fail(L"do or collect");
        Take();
        SkipLines();
        filter = ParseExpression();
        SkipLines();
    }
    loop->collect = PeekKey(Key::Collect);
    if (!loop->collect && !PeekKey(Key::Do))
        Fail(L"do or collect");
    Take();
    SkipLines();
    loop->body = ParseExpression();
    return loop;
}

ExprPtr Parser::ParseWhile() {
    auto loop = New<WhileExpr>(Where(Take()));
    SkipLines();
    loop->condition = ParseExpression();
    SkipLines();
    ExpectKey(Key::Do, L"do");
    SkipLines();
    loop->body = ParseExpression();
    return loop;
}

ExprPtr Parser::ParseDo() {
    auto loop = New<WhileExpr>(Where(Take()));
    loop->bodyFirst = true;
    SkipLines();
    loop->body = ParseExpression();
    SkipLines();
    ExpectKey(Key::While, L"while");
    SkipLines();
    loop->condition = ParseExpression();
    return loop;
}

ExprPtr Parser::ParseCase() {
    auto result = New<CaseExpr>(Where(Take()));
    SkipLines();
    if (!PeekKey(Key::Of)) {
        result->subject = ParseExpression();
        SkipLines();
    }
    ExpectKey(Key::Of, L"of");
    SkipLines();
    Expect(Tok::LParen, L"(");
    const bool inCase = std::exchange(inCase_, true);
    for (SkipLines(); !PeekIs(Tok::RParen); SkipLines())
        ParseCaseItem(*result);
    Take();
    inCase_ = inCase;
    return result;
}

void Parser::ParseCaseItem(CaseExpr& result) {
    ExprPtr label;
    const bool isDefault = LowerText(Peek()) == L"default";
    const std::wstring_view text = list_.Text(Peek());
    if (PeekIs(Tok::Time) && text.find(L':') != std::wstring_view::npos) {
        // `1:2.5` reads as a time, but here it is a label and its value.
        const Position where = Where(Take());
        const size_t colon = text.find(L':');
        label = New<LiteralExpr>(where, NumberLiteral(text.substr(0, colon)));
        result.items.emplace_back(std::move(label),
                                  New<LiteralExpr>(where, NumberLiteral(text.substr(colon + 1))));
        return;
    }
    if (isDefault)
        Take();
    else
        label = ParseOperand();
    Expect(Tok::Colon, L":");
    SkipLines();
    ExprPtr value = ParseExpression();
    if (!isDefault)
        result.items.emplace_back(std::move(label), std::move(value));
    else if (!result.otherwise)
        result.otherwise = std::move(value);
}

ExprPtr Parser::ParseTry() {
    auto result = New<TryExpr>(Where(Take()));
    SkipLines();
    result->body = ParseExpression();
    SkipLines();
    ExpectKey(Key::Catch, L"catch");
    SkipLines();
    result->handler = ParseExpression();
    if (result->handler->kind == ExprKind::Block &&
        static_cast<BlockExpr&>(*result->handler).items.empty())
        bareCatchEnd_ = at_;
    return result;
}

// Behind `return`: nothing that could be its value.
bool Parser::EndsJump() const {
    const Token& token = Peek(LinesAhead());
    switch (token.kind) {
    case Tok::RParen:
    case Tok::End:
        return true;
    default:
        return token.key == Key::Else || token.key == Key::Catch || token.key == Key::While;
    }
}

// return [e] | exit [with e] | continue. An exit or continue may carry an empty `()`.
ExprPtr Parser::ParseJump(JumpKind kind) {
    auto jump = New<JumpExpr>(Where(Take()));
    jump->jump = kind;
    if (kind == JumpKind::Return) {
        if (EndsJump())
            return jump;
        SkipLines();
        jump->value = ParseExpression();
    } else if (kind == JumpKind::Exit && AcceptKey(Key::With)) {
        SkipLines();
        jump->value = ParseExpression();
    } else if (PeekIs(Tok::LParen) && Peek().partner == at_ + 1) {
        at_ += 2;
    }
    return jump;
}

// A prefix that changes how its body runs. Several can stand one behind the other.
ExprPtr Parser::ParseContext() {
    const Level level(*this);
    auto context = New<ContextExpr>(Where(Peek()));
    AcceptKey(Key::With);
    ParseContextHead(*context);
    if (Accept(Tok::Comma)) {
        SkipLines();
        context->body = ParseContext();
        return context;
    }
    SkipLines();
    context->body = ParseExpression();
    return context;
}

void Parser::ParseContextHead(ContextExpr& context) {
    if (AcceptKey(Key::Undo)) {
        context.name = L"undo";
        ParseUndoHead(context);
        return;
    }
    if (AcceptKey(Key::At)) {
        context.name = L"at " + Lower(TakeWord(L"time or level"));
    } else if (AcceptKey(Key::In)) {
        context.name = AcceptKey(Key::Coordsys) ? L"in coordsys" : L"in";
    } else if (AcceptKey(Key::Coordsys)) {
        context.name = L"in coordsys";
    } else if (AcceptKey(Key::About)) {
        context.name = L"about";
        if (PeekKey(Key::Coordsys)) {
            context.arguments.push_back(New<LiteralExpr>(Where(Take()), Value()));
            return;
        }
    } else {
        context.name = Lower(TakeWord(L"<context>"));
    }
    SkipLines();
    if (context.name == L"in coordsys")
        context.arguments.push_back(ParseCoordsys());
    else
        context.arguments.push_back(ParseOperand());
}

// A coordinate system by its name, or an operand that has one.
ExprPtr Parser::ParseCoordsys() {
    static constexpr std::wstring_view names[] = {L"world",  L"local",  L"parent",       L"grid",
                                                  L"screen", L"gimbal", L"working_pivot"};
    const Token& token = Peek();
    const bool named = token.kind == Tok::Word && std::find(std::begin(names), std::end(names),
                                                            LowerText(token)) != std::end(names);
    if (!named || Peek(1).kind == Tok::Dot)
        return ParseOperand();
    return New<LiteralExpr>(Where(token), MakeName(list_.WordValue(Take())));
}

// undo on | undo "label" on | undo label:"label" on | undo "label"
void Parser::ParseUndoHead(ContextExpr& context) {
    SkipLines();
    if (IsKeywordArgument())
        context.arguments.push_back(std::move(ParseKeywordArgument().value));
    else
        context.arguments.push_back(ParseOperand());
    const Token& next = Peek();
    const bool stateFollows =
        next.kind == Tok::Word &&
        (next.key == Key::None || next.key == Key::On || next.key == Key::Off);
    const bool isLabel = context.arguments[0]->kind == ExprKind::Literal &&
                         static_cast<LiteralExpr&>(*context.arguments[0]).value.AsObject();
    bool blockIsState = false;
    if (isLabel && next.kind == Tok::LParen && next.partner != 0) {
        const Tok behind = tokens_[next.partner + 1].kind;
        blockIsState = behind == Tok::LParen || behind == Tok::Word;
    }
    if ((isLabel && (stateFollows || blockIsState)) || next.key == Key::On || next.key == Key::Off)
        context.arguments.push_back(ParseOperand());
}

// set <context> value: for what follows, without a body.
ExprPtr Parser::ParseSet() {
    auto context = New<ContextExpr>(Where(Take()));
    AcceptKey(Key::In);
    context->name = Lower(TakeWord(L"<context>"));
    context->arguments.push_back(context->name == L"coordsys" ? ParseCoordsys() : ParseOperand());
    return context;
}

// when <attribute> <objects> change(s) [key:value..] [name] do expr
ExprPtr Parser::ParseWhen() {
    auto when = New<UnsupportedExpr>(Where(Take()));
    when->what = L"when";
    while (!AcceptKeyAfterLines(Key::Do)) {
        if (IsKeywordArgument())
            when->parts.push_back(std::move(ParseKeywordArgument().value));
        else if (PeekIs(Tok::Word) && Peek().key != Key::None)
            Take();
        else
            when->parts.push_back(ParseOperand());
    }
    SkipLines();
    when->body = ParseExpression();
    return when;
}

// max <words>: a menu command, up to the end of its line.
ExprPtr Parser::ParseMaxCommand() {
    auto command = New<UnsupportedExpr>(Where(Take()));
    command->what = L"max";
    for (;;) {
        const Token& token = Peek();
        const bool word = token.kind == Tok::Word && token.key != Key::Else &&
                          token.key != Key::Catch && token.key != Key::Then && token.key != Key::Do;
        if (!word && token.kind != Tok::Number && token.kind != Tok::String &&
            token.kind != Tok::Question)
            break;
        command->what += L" " + Lower(list_.Text(Take()));
    }
    if (command->what == L"max")
        Fail(L"max command name");
    return command;
}

} // namespace simhost::script
