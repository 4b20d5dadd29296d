// Declarations, functions and structs.
#include "simhost/script/parser.h"
#include "simhost/script/text.h"

namespace simhost::script {

// local | global, then names with or without values.
ExprPtr Parser::ParseDeclaration() {
    auto result = New<DeclareExpr>(Where(Peek()));
    const bool isLocal = Take().key == Key::Local;
    do {
        SkipLines();
        const Position where = Where(Peek());
        const std::wstring name = TakeNewName(L"<name>");
        // The value may still use an outer variable of the same name.
        ExprPtr value = Accept(Tok::Assign) ? ParseNext() : nullptr;
        const Binding binding =
            isLocal ? scopes_.DeclareLocal(name, where) : scopes_.DeclareGlobal(name);
        result->items.emplace_back(binding, std::move(value));
    } while (Accept(Tok::Comma));
    return result;
}

ExprPtr Parser::ParseFunction() {
    auto result = New<FunctionExpr>(Where(Take()));
    std::wstring name = TakeNewName(L"function name");
    result->binding = scopes_.Find(name, result->where, Scopes::Use::Define);
    result->function = ParseFunctionBody(std::move(name));
    return result;
}

// Behind the name: parameters, "=" and the body.
std::shared_ptr<FunctionBody> Parser::ParseFunctionBody(std::wstring name) {
    auto function = std::make_shared<FunctionBody>();
    function->name = std::move(name);
    InFunction(*function, [&] {
        for (SkipLines(); !Accept(Tok::Assign); SkipLines())
            function->parameters.push_back(ParseParameter());
    });
    return function;
}

// The body of a function, behind a head in the function's own scope.
void Parser::InFunction(FunctionBody& function, const std::function<void()>& head) {
    const bool inCase = std::exchange(inCase_, false);
    const bool inCatch = std::exchange(inCatch_, false);
    scopes_.BeginFunction();
    head();
    function.body = ParseNext();
    function.slotCount = scopes_.EndFunction();
    inCase_ = inCase;
    inCatch_ = inCatch;
}

// name | name: | name:default
Parameter Parser::ParseParameter() {
    constexpr const wchar_t* wanted = L"parameter name or =";
    Parameter parameter;
    const Position where = Where(Peek());
    const bool isKeyword = Peek(1).kind == Tok::Colon;
    const std::wstring name = isKeyword ? TakeWord(wanted) : TakeNewName(wanted);
    if (isKeyword) {
        Take();
        parameter.keyword = Lower(name);
        const bool nextIsKeyword = PeekIs(Tok::Word) && Peek(1).kind == Tok::Colon;
        if (!PeekIs(Tok::Assign) && !PeekIs(Tok::Line) && !nextIsKeyword)
            parameter.value = ParseOperand();
    }
    parameter.slot = scopes_.DeclareLocal(name, where).slot;
    return parameter;
}

ExprPtr Parser::ParseStruct() {
    auto result = New<StructExpr>(Where(Take()));
    result->body = std::make_shared<StructBody>();
    result->body->name = TakeNewName(L"struct name");
    result->binding = scopes_.Find(result->body->name, result->where, Scopes::Use::Define);
    SkipLines();
    scopes_.BeginStruct();
    DeclareMembers();
    Expect(Tok::LParen, L"(");
    SkipLines();
    if (!PeekIs(Tok::RParen)) {
        do {
            SkipLines();
            result->body->members.push_back(ParseStructMember());
            SkipLines();
        } while (Accept(Tok::Comma));
    }
    Expect(Tok::RParen, L", or )");
    scopes_.EndBlock();
    return result;
}

// Members see each other, also those that come behind them.
void Parser::DeclareMembers() {
    bool begins = true;
    uint32_t index = 0;
    for (size_t i = at_ + 1; PeekIs(Tok::LParen) && i < Peek().partner; ++i) {
        const Token& token = tokens_[i];
        if (token.partner != 0)
            i = token.partner;
        if (begins && token.kind == Tok::Word && token.key != Key::Fn) {
            scopes_.DeclareMember(list_.WordValue(token), index++);
            begins = false;
        }
        begins = begins || token.kind == Tok::Comma;
    }
}

// name | name = default | fn ..
StructBody::Member Parser::ParseStructMember() {
    StructBody::Member member;
    member.isFunction = AcceptKey(Key::Fn);
    member.name = TakeNewName(L"struct member");
    if (member.isFunction) {
        member.function = ParseFunctionBody(member.name);
    } else if (Accept(Tok::Assign)) {
        member.function = std::make_shared<FunctionBody>();
        InFunction(*member.function, [] {});
    }
    return member;
}

} // namespace simhost::script
