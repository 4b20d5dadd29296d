// Conditions, loops, jumps and error handling.
#include "simhost/script/parser.h"
#include "simhost/script/text.h"

namespace simhost::script {

// if c then a [else b] | if c do a. A chain of `else if` is one node.
ExprPtr Parser::ParseIf() {
    auto result = New<IfExpr>(Where(Take()));
    for (;;) {
        ExprPtr condition = ParseNext();
        SkipLines();
        const bool isDo = AcceptKey(Key::Do);
        if (!isDo)
            ExpectKey(Key::Then, L"then or do");
        result->branches.emplace_back(std::move(condition), ParseNext());
        if (isDo || !AcceptKeyAfterLines(Key::Else))
            return result;
        SkipLines();
        if (!AcceptKey(Key::If)) {
            result->otherwise = ParseExpression();
            return result;
        }
    }
}

ExprPtr Parser::ParseFor() {
    auto loop = New<ForExpr>(Where(Take()));
    scopes_.BeginBlock();
    ParseForHead(*loop);
    scopes_.BeginBlock();
    while (PeekKey(Key::While) || PeekKey(Key::Where)) {
        ExprPtr& filter = PeekKey(Key::While) ? loop->whileTrue : loop->whereTrue;
        if (filter)
            Fail(L"do or collect");
        Take();
        filter = ParseNext();
        SkipLines();
    }
    loop->collect = AcceptKey(Key::Collect);
    if (!loop->collect)
        ExpectKey(Key::Do, L"do or collect");
    loop->body = ParseNext();
    loop->slots = scopes_.EndBlock();
    scopes_.EndBlock();
    return loop;
}

// Up to the filters. The names mean the loop's variables behind the range only.
void Parser::ParseForHead(ForExpr& loop) {
    std::vector<std::wstring> names;
    do {
        SkipLines();
        names.push_back(TakeNewName(L"<name>"));
        SkipLines();
    } while (names.size() < 3 && Accept(Tok::Comma));
    if (!AcceptKey(Key::In) && !Accept(Tok::Assign))
        Fail(L"= or in");
    loop.first = ParseNext();
    SkipLines();
    if (AcceptKey(Key::To)) {
        loop.last = ParseNext();
        SkipLines();
        if (AcceptKey(Key::By)) {
            loop.step = ParseNext();
            SkipLines();
        }
    }
    for (const std::wstring& name : names)
        loop.names.push_back(scopes_.DeclareLocal(name, loop.where).slot);
}

// while c do e | do e while c
ExprPtr Parser::ParseWhile(bool bodyFirst) {
    auto loop = New<WhileExpr>(Where(Take()));
    loop->bodyFirst = bodyFirst;
    scopes_.BeginBlock();
    (bodyFirst ? loop->body : loop->condition) = ParseNext();
    SkipLines();
    ExpectKey(bodyFirst ? Key::While : Key::Do, bodyFirst ? L"while" : L"do");
    (bodyFirst ? loop->condition : loop->body) = ParseNext();
    loop->slots = scopes_.EndBlock();
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
    const bool isDefault = EqualNoCase(list_.Text(Peek()), L"default");
    ExprPtr label;
    if (isDefault)
        Take();
    else
        label = ParseOperand();
    Expect(Tok::Colon, L":");
    ExprPtr value = ParseNext();
    if (!isDefault)
        result.items.emplace_back(std::move(label), std::move(value));
    else if (!result.otherwise)
        result.otherwise = std::move(value);
}

ExprPtr Parser::ParseTry() {
    auto result = New<TryExpr>(Where(Take()));
    const bool inCatch = std::exchange(inCatch_, false);
    result->body = ParseNext();
    SkipLines();
    ExpectKey(Key::Catch, L"catch");
    inCatch_ = true;
    result->handler = ParseNext();
    inCatch_ = inCatch;
    return result;
}

// return [e] | exit [with e] | continue. An exit or continue may carry an empty `()`.
ExprPtr Parser::ParseJump(JumpKind kind) {
    auto jump = New<JumpExpr>(Where(Take()));
    jump->kind = kind;
    if (kind == JumpKind::Return) {
        const size_t start = at_;
        SkipLines();
        const bool ends = PeekIs(Tok::RParen) || PeekIs(Tok::End) || PeekKey(Key::Else) ||
                          PeekKey(Key::Catch) || PeekKey(Key::While);
        if (ends)
            at_ = start;
        else
            jump->value = ParseExpression();
    } else if (kind == JumpKind::Exit && AcceptKey(Key::With)) {
        jump->value = ParseNext();
    } else if (PeekIs(Tok::LParen) && Peek().partner == at_ + 1) {
        at_ += 2;
    }
    return jump;
}

// [with] undo ["label"] on|off e
ExprPtr Parser::ParseUndo() {
    auto undo = New<UndoExpr>(Where(Peek()));
    if (AcceptKey(Key::With) && !PeekKey(Key::Undo)) {
        Fail(Where(Peek()),
             L"the context is not supported: with " + std::wstring(list_.Text(Peek())));
    }
    Take();
    if (!Accept(Tok::String))
        Accept(Tok::Verbatim);
    undo->state = ParseOperand();
    undo->body = ParseNext();
    return undo;
}

} // namespace simhost::script
