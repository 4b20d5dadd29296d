#pragma once
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
    /// `tokens` must outlive the parser. The frame rate gives literals like `10f` their length.
    explicit Parser(const TokenList& tokens, int frameRate = 30);

    /// The next top-level expression; null at the end. Throws ScriptError (Syntax).
    [[nodiscard]] ExprPtr Next();

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
    [[nodiscard]] size_t LinesAhead() const;
    [[nodiscard]] static Position Where(const Token& token) { return {token.line, token.column}; }
    [[noreturn]] void Fail(const wchar_t* expected) const;
    [[noreturn]] static void Fail(Position where, std::wstring message);
    [[nodiscard]] std::wstring TakeWord(const wchar_t* what);
    [[nodiscard]] std::wstring LowerText(const Token& token) const;
    void RequireSeparator();
    [[nodiscard]] bool StartsStatement(const Token& token) const;
    [[nodiscard]] bool IsDefinitionStart(size_t ahead = 0) const;

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
    void ParseArguments(CallExpr& call);
    [[nodiscard]] bool IsKeywordArgument() const;
    [[nodiscard]] bool StartsArgument() const;
    [[nodiscard]] bool StartsOperand(size_t ahead) const;
    [[nodiscard]] bool IsCaseLabel() const;
    void ParseKeywordArguments(std::vector<NamedExpr>& keywords, ExprList& arguments);
    NamedExpr ParseKeywordArgument();
    ExprPtr ParseOperand();
    ExprPtr ParsePrimary();
    ExprPtr ParseWordOperand();
    ExprPtr ParseSuffixes(ExprPtr operand);
    ExprPtr ParsePrefixed(UnaryOp op);
    std::unique_ptr<BlockExpr> ParseBlock(bool handlers);
    ExprPtr ParseArray();
    ExprPtr ParseBitArray();
    ExprPtr ParsePoint();

    // parser_control.cpp
    ExprPtr ParseIf();
    ExprPtr ParseFor();
    ExprPtr ParseWhile();
    ExprPtr ParseDo();
    ExprPtr ParseCase();
    void ParseCaseItem(CaseExpr& result);
    ExprPtr ParseTry();
    ExprPtr ParseJump(JumpKind kind);
    [[nodiscard]] bool EndsJump() const;
    ExprPtr ParseContext();
    void ParseContextHead(ContextExpr& context);
    void ParseUndoHead(ContextExpr& context);
    ExprPtr ParseCoordsys();
    ExprPtr ParseSet();
    ExprPtr ParseWhen();
    ExprPtr ParseMaxCommand();

    // parser_definition.cpp
    ExprPtr ParseDeclaration();
    std::shared_ptr<FunctionBody> ParseFunctionBody();
    ExprPtr ParseFunction();
    Parameter ParseParameter();
    ExprPtr ParseStruct();
    StructMember ParseStructMember();
    ExprPtr ParseDefinition();
    void ParseDefinitionHead(DefinitionExpr& definition);
    void ParseMembers(DefinitionExpr& definition);
    ExprPtr ParseMember(const std::wstring& type);
    ExprPtr ParseItem(const std::wstring& owner);
    NamedExpr ParseItemKeyword();
    std::unique_ptr<HandlerExpr> ParseHandler();

    const TokenList& list_;
    const std::vector<Token>& tokens_;
    int frameRate_;
    size_t at_ = 0;
    size_t nodes_ = 0;
    int depth_ = 0;
    bool inCase_ = false;      // labels may follow on the same line
    size_t bareCatchEnd_ = 0;  // token behind a `catch()`
    size_t definitionEnd_ = 0; // token behind a struct or a definition of user interface
    StackGuard stack_;
};

} // namespace simhost::script
