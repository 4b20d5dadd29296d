// Declarations, functions, structs, and the definitions of user interface and plug-ins.
#include "simhost/script/objects.h"
#include "simhost/script/parser.h"
#include "simhost/script/text.h"

namespace simhost::script {
namespace {

bool IsHardKeyword(const Token& token) {
    return token.key != Key::None && token.key != Key::About && !IsSoftKeyword(token.key);
}

} // namespace

// local | global | persistent global, then names with or without values, or a definition.
ExprPtr Parser::ParseDeclaration() {
    auto result = New<DeclareExpr>(Where(Peek()));
    if (AcceptKey(Key::Persistent)) {
        result->scope = DeclareScope::Persistent;
        ExpectKey(Key::Global, L"global");
    } else {
        result->scope = Take().key == Key::Local ? DeclareScope::Local : DeclareScope::Global;
    }
    if (PeekKey(Key::Fn) || PeekKey(Key::Mapped) || PeekKey(Key::Struct) || IsDefinitionStart()) {
        DeclareExpr::Item item;
        item.where = Where(Peek());
        ExprPtr value = ParseExpression();
        if (value->kind == ExprKind::Function)
            item.name = static_cast<FunctionExpr&>(*value).function->name;
        else if (value->kind == ExprKind::Struct)
            item.name = static_cast<StructExpr&>(*value).body->name;
        else
            item.name = static_cast<DefinitionExpr&>(*value).name;
        item.value = std::move(value);
        result->items.push_back(std::move(item));
        return result;
    }
    do {
        SkipLines();
        if (IsHardKeyword(Peek()))
            Fail(L"<name>");
        DeclareExpr::Item item;
        item.where = Where(Peek());
        item.name = TakeWord(L"<name>");
        if (Accept(Tok::Assign)) {
            SkipLines();
            item.value = ParseExpression();
        }
        result->items.push_back(std::move(item));
        if (Peek(LinesAhead()).kind == Tok::Comma) // the comma may begin the next line
            SkipLines();
    } while (Accept(Tok::Comma));
    return result;
}

std::shared_ptr<FunctionBody> Parser::ParseFunctionBody() {
    const Level level(*this);
    auto function = std::make_shared<FunctionBody>();
    function->where = Where(Peek());
    function->mapped = AcceptKey(Key::Mapped);
    ExpectKey(Key::Fn, L"function");
    if (IsHardKeyword(Peek()))
        Fail(L"function name");
    function->name = TakeWord(L"function name");
    for (SkipLines(); !Accept(Tok::Assign); SkipLines())
        function->parameters.push_back(ParseParameter());
    SkipLines();
    const bool inCase = std::exchange(inCase_, false);
    function->body = ParseExpression();
    inCase_ = inCase;
    return function;
}

// name | &name | name: | name:default
Parameter Parser::ParseParameter() {
    Parameter parameter;
    parameter.byReference = Accept(Tok::Ampersand);
    if (IsHardKeyword(Peek()) && Peek(1).kind != Tok::Colon)
        Fail(L"parameter name or =");
    parameter.name = TakeWord(L"parameter name or =");
    if (!Accept(Tok::Colon))
        return parameter;
    parameter.keyword = true;
    const bool nextIsKeyword = PeekIs(Tok::Word) && Peek(1).kind == Tok::Colon;
    if (!PeekIs(Tok::Assign) && !PeekIs(Tok::Line) && !PeekIs(Tok::Ampersand) && !nextIsKeyword)
        parameter.value = ParseOperand();
    return parameter;
}

ExprPtr Parser::ParseFunction() {
    auto result = New<FunctionExpr>(Where(Peek()));
    result->function = ParseFunctionBody();
    return result;
}

ExprPtr Parser::ParseStruct() {
    auto result = New<StructExpr>(Where(Take()));
    result->body = std::make_shared<StructBody>();
    if (IsHardKeyword(Peek()))
        Fail(L"struct name");
    result->body->name = TakeWord(L"struct name");
    SkipLines();
    Expect(Tok::LParen, L"(");
    SkipLines();
    const bool inCase = std::exchange(inCase_, false);
    bool isPrivate = false;
    if (!PeekIs(Tok::RParen)) {
        do {
            SkipLines();
            for (;;) { // access words, alone on a line or before a member
                const std::wstring word = LowerText(Peek());
                const Tok next = Peek(1).kind;
                if ((word != L"private" && word != L"public") || next == Tok::Assign ||
                    next == Tok::Comma || next == Tok::RParen)
                    break;
                isPrivate = word == L"private";
                Take();
                SkipLines();
            }
            result->body->members.push_back(ParseStructMember());
            result->body->members.back().isPrivate = isPrivate;
            SkipLines();
        } while (Accept(Tok::Comma));
    }
    Expect(Tok::RParen, L", or )");
    definitionEnd_ = at_;
    inCase_ = inCase;
    return result;
}

StructMember Parser::ParseStructMember() {
    StructMember member;
    member.where = Where(Peek());
    if (PeekKey(Key::Fn) || PeekKey(Key::Mapped)) {
        member.function = ParseFunctionBody();
        member.name = member.function->name;
        return member;
    }
    if (PeekKey(Key::On) && Peek(1).kind == Tok::Word) {
        auto handler = ParseHandler();
        member.isEvent = true;
        member.name = Lower(handler->words[0]);
        member.function = std::make_shared<FunctionBody>();
        member.function->where = member.where;
        member.function->name = member.name;
        member.function->body = std::move(handler->body);
        return member;
    }
    if (IsDefinitionStart() || (PeekKey(Key::Struct) && Peek(1).kind == Tok::Word)) {
        member.value = ParseExpression();
        member.name = member.value->kind == ExprKind::Struct
                          ? static_cast<StructExpr&>(*member.value).body->name
                          : static_cast<DefinitionExpr&>(*member.value).name;
        return member;
    }
    AcceptKey(Key::Local);
    if (IsHardKeyword(Peek()))
        Fail(L"struct member");
    member.name = TakeWord(L"struct member");
    if (Accept(Tok::Assign)) {
        SkipLines();
        member.value = ParseExpression();
    }
    return member;
}

// rollout, utility, rcmenu, tool, plugin, macroScript, attributes, parameters, group, subMenu
ExprPtr Parser::ParseDefinition() {
    const Level level(*this);
    auto definition = New<DefinitionExpr>(Where(Peek()));
    definition->type = Lower(TakeWord(L"definition"));
    ParseDefinitionHead(*definition);
    const bool inCase = std::exchange(inCase_, false);
    ParseMembers(*definition);
    definitionEnd_ = at_;
    inCase_ = inCase;
    return definition;
}

void Parser::ParseDefinitionHead(DefinitionExpr& definition) {
    if (definition.type == L"plugin")
        definition.arguments.push_back(
            New<LiteralExpr>(Where(Peek()), MakeName(TakeWord(L"plug-in superclass"))));
    if (PeekIs(Tok::Word))
        definition.name = list_.WordValue(Take());
    else if (PeekIs(Tok::String) || PeekIs(Tok::Verbatim))
        definition.name = list_.StringValue(Take());
    for (SkipLines(); !PeekIs(Tok::LParen); SkipLines()) {
        if (PeekIs(Tok::Word) && Peek(1).kind == Tok::Colon)
            definition.keywords.push_back(ParseKeywordArgument());
        else if (StartsArgument())
            definition.arguments.push_back(ParseOperand());
        else
            Fail(L"(");
    }
}

void Parser::ParseMembers(DefinitionExpr& definition) {
    Expect(Tok::LParen, L"(");
    for (SkipLines(); !PeekIs(Tok::RParen); SkipLines()) {
        definition.members.push_back(ParseMember(definition.type));
        // Members need no separator: each begins with a word of its own.
        if (definition.type == L"macroscript")
            RequireSeparator();
    }
    Take();
}

ExprPtr Parser::ParseMember(const std::wstring& type) {
    const Token& token = Peek();
    if (token.key == Key::On && Peek(1).kind == Tok::Word)
        return ParseHandler();
    if (type == L"macroscript")
        return ParseExpression();
    switch (token.key) {
    case Key::Local:
    case Key::Global:
    case Key::Persistent:
    case Key::Fn:
    case Key::Mapped:
    case Key::Struct:
        return ParseExpression();
    case Key::Parameters:
        if (type == L"plugin" || type == L"attributes")
            return ParseDefinition();
        break;
    default:
        break;
    }
    if (IsDefinitionStart())
        return ParseDefinition();
    const std::wstring word = LowerText(token);
    const Tok next = Peek(1).kind;
    if ((word == L"group" || word == L"submenu") && (next == Tok::String || next == Tok::Resource ||
                                                     next == Tok::Verbatim || next == Tok::LParen))
        return ParseDefinition();
    if (word == L"include" && next == Tok::String)
        return ParseCall();
    return ParseItem(type);
}

// <type> <name> ["caption"] [key:value..]; a parameter block's entry has no type. Keyword
// arguments may go on over the next lines.
ExprPtr Parser::ParseItem(const std::wstring& owner) {
    auto item = New<ItemExpr>(Where(Peek()));
    if (PeekIs(Tok::Word) && IsHardKeyword(Peek()))
        Fail(L"<item>");
    item->type = TakeWord(L"<item>");
    if (owner == L"parameters") {
        item->name = item->type;
    } else if (PeekIs(Tok::Word) && Peek(1).kind != Tok::Colon) {
        item->name = list_.WordValue(Take());
    } else if (!PeekIs(Tok::String) && Lower(item->type) != L"separator") {
        Fail(L"<name>");
    }
    for (;;) {
        const size_t start = at_;
        SkipLines();
        if (PeekIs(Tok::Word) && Peek(1).kind == Tok::Colon) {
            item->keywords.push_back(ParseItemKeyword());
            continue;
        }
        at_ = start;
        if (!StartsArgument() || PeekIs(Tok::Word))
            break;
        item->arguments.push_back(ParseOperand());
    }
    if (!PeekIs(Tok::Line) && !PeekIs(Tok::RParen) && !PeekIs(Tok::Word))
        Fail(L"end of item");
    return item;
}

// key:value, or key:(control, control, ..) for a parameter with several controls.
NamedExpr Parser::ParseItemKeyword() {
    if (Peek(2).kind != Tok::LParen || !Peek(2).hasComma)
        return ParseKeywordArgument();
    NamedExpr argument;
    argument.name = list_.WordValue(Take());
    Take();
    argument.value = ParseArray();
    return argument;
}

// on <words> do expr | on <words> return expr
std::unique_ptr<HandlerExpr> Parser::ParseHandler() {
    const Level level(*this);
    auto handler = New<HandlerExpr>(Where(Take()));
    while (!AcceptKeyAfterLines(Key::Do) && !AcceptKeyAfterLines(Key::Return))
        handler->words.push_back(TakeWord(L"do"));
    if (handler->words.empty())
        Fail(L"event name");
    SkipLines();
    const bool inCase = std::exchange(inCase_, false);
    handler->body = ParseExpression();
    inCase_ = inCase;
    return handler;
}

} // namespace simhost::script
