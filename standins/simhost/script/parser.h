#pragma once
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "simhost/script/ast.h"
#include "simhost/script/lexer.h"
#include "simhost/script/limits.h"

namespace simhost::script {

/// Turns tokens into trees, one top-level expression at a time, so that a script's first
/// expressions can run before a later one is even read.
class Parser {
  public:
    /// `tokens` and `globals` must outlive the parser.
    Parser(const TokenList& tokens, GlobalTable& globals);

    /// The next top-level expression; null at the end. Throws ScriptError (Syntax, Compile).
    [[nodiscard]] ExprPtr Next();
    /// The number of variables of the expression that came last.
    [[nodiscard]] uint32_t SlotCount() const { return scopes_.TopSlots(); }

  private:
    // parser.cpp: tokens
    [[nodiscard]] const Token& Peek(size_t ahead = 0) const;
    [[nodiscard]] bool PeekIs(Tok kind) const { return Peek().kind == kind; }
    [[nodiscard]] bool PeekKey(Key key) const { return Peek().key == key; }
    const Token& Take();
    bool Accept(Tok kind);
    bool AcceptKey(Key key);
    void Expect(Tok kind, const wchar_t* what);
    void ExpectKey(Key key, const wchar_t* what);
    void SkipLines();
    bool AcceptKeyAfterLines(Key key);
    [[nodiscard]] static Position Where(const Token& token) { return {token.line, token.column}; }
    [[noreturn]] void Fail(const wchar_t* expected) const;
    [[noreturn]] static void Fail(Position where, std::wstring message);
    [[nodiscard]] std::wstring TakeWord(const wchar_t* what);
    [[nodiscard]] std::wstring TakeNewName(const wchar_t* what);
    void RequireSeparator();

    template <class T, class... Args>
    std::unique_ptr<T> New(Position where, Args&&... args) {
        if (++nodes_ > maxNodes)
            Fail(where, L"the expression is too long");
        return std::make_unique<T>(where, std::forward<Args>(args)...);
    }

    /// One more construct inside the others; fails when there are too many.
    class Level {
      public:
        explicit Level(Parser& parser);
        ~Level() { --parser_.depth_; }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;

      private:
        Parser& parser_;
    };

    // parser.cpp: operators
    ExprPtr ParseExpression();
    /// The same behind line breaks.
    ExprPtr ParseNext();
    ExprPtr ParseKeyword(Key key);
    ExprPtr ParseAssignment();
    ExprPtr ParseLogical(bool isAnd);
    ExprPtr ParseNot();
    ExprPtr ParseChain(int level);
    ExprPtr ParsePower();
    ExprPtr ParseConvert();

    // parser_operand.cpp
    ExprPtr ParseCall();
    ExprPtr ParseMinus(bool beforeCall);
    [[nodiscard]] bool IsKeywordArgument() const;
    [[nodiscard]] bool StartsArgument() const;
    [[nodiscard]] bool IsCaseLabel() const;
    ExprPtr ParseOperand();
    ExprPtr ParsePrimary();
    ExprPtr ParseWordOperand();
    ExprPtr ParseSuffixes(ExprPtr operand);
    ExprPtr ParseBlock();
    ExprList ParseList(Tok closing, const wchar_t* what);
    ExprPtr ParsePoint();

    // parser_control.cpp
    ExprPtr ParseIf();
    ExprPtr ParseFor();
    void ParseForHead(ForExpr& loop);
    ExprPtr ParseWhile(bool bodyFirst);
    ExprPtr ParseCase();
    void ParseCaseItem(CaseExpr& result);
    ExprPtr ParseTry();
    ExprPtr ParseJump(JumpKind kind);
    ExprPtr ParseUndo();

    // parser_definition.cpp
    ExprPtr ParseDeclaration();
    ExprPtr ParseFunction();
    std::shared_ptr<FunctionBody> ParseFunctionBody(std::wstring name);
    Parameter ParseParameter();
    void InFunction(FunctionBody& function, const std::function<void()>& head);
    ExprPtr ParseStruct();
    void DeclareMembers();
    StructBody::Member ParseStructMember();

    const TokenList& list_;
    const std::vector<Token>& tokens_;
    Scopes scopes_;
    size_t at_ = 0;
    size_t nodes_ = 0;
    int depth_ = 0;
    bool inCase_ = false;  // labels may follow on the same line
    bool inCatch_ = false; // of this function
    StackGuard stack_;
};

} // namespace simhost::script
