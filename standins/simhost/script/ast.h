#pragma once
// The tree of one top-level expression; names are settled. Long chains (a + b + c.., else if..,
// x.y.z) are lists or bounded, so that the depth of the tree is the depth of the text's brackets.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "simhost/script/error.h"
#include "simhost/script/scopes.h"

namespace simhost::script {

class Expr {
  public:
    explicit Expr(Position where_) : where(where_) {}
    virtual ~Expr() = default;
    Expr(const Expr&) = delete;
    Expr& operator=(const Expr&) = delete;

    /// The expression's value. Counts a step.
    [[nodiscard]] Value Run(Frame& frame) const;
    /// The same for conditions.
    [[nodiscard]] bool RunCondition(Frame& frame) const;
    /// Whether it names a place that can be assigned.
    [[nodiscard]] virtual bool IsPlace() const { return false; }
    virtual void Store(Frame&, const Value&) const {}

    const Position where;

  private:
    virtual Value Evaluate(Frame& frame) const = 0;
};
using ExprPtr = std::unique_ptr<Expr>;
using ExprList = std::vector<ExprPtr>;
using ExprPairs = std::vector<std::pair<ExprPtr, ExprPtr>>;

struct LiteralExpr final : Expr {
    LiteralExpr(Position p, Value v) : Expr(p), value(std::move(v)) {}
    Value value;
    Value Evaluate(Frame& frame) const override;
};

struct VariableExpr final : Expr {
    VariableExpr(Position p, std::wstring n, Binding b) : Expr(p), name(std::move(n)), binding(b) {}
    std::wstring name;
    Binding binding;
    Value Evaluate(Frame& frame) const override;
    [[nodiscard]] bool IsPlace() const override { return true; }
    void Store(Frame& frame, const Value& value) const override;
};

/// $box*: the text without "$".
struct PathExpr final : Expr {
    PathExpr(Position p, std::wstring text) : Expr(p), pattern(std::move(text)) {}
    std::wstring pattern;
    Value Evaluate(Frame& frame) const override;
};

struct ArrayExpr final : Expr {
    using Expr::Expr;
    ExprList items;
    Value Evaluate(Frame& frame) const override;
};

struct PointExpr final : Expr {
    using Expr::Expr;
    ExprList items; // two to four
    Value Evaluate(Frame& frame) const override;
};

struct BlockExpr final : Expr {
    using Expr::Expr;
    ExprList items;
    std::vector<uint32_t> slots; // locals that begin their life here
    Value Evaluate(Frame& frame) const override;
};

struct PropertyExpr final : Expr {
    using Expr::Expr;
    ExprPtr object;
    std::wstring name;
    Value Evaluate(Frame& frame) const override;
    [[nodiscard]] bool IsPlace() const override { return true; }
    void Store(Frame& frame, const Value& value) const override;
};

struct IndexExpr final : Expr {
    using Expr::Expr;
    ExprPtr object;
    ExprPtr index;
    Value Evaluate(Frame& frame) const override;
    [[nodiscard]] bool IsPlace() const override { return true; }
    void Store(Frame& frame, const Value& value) const override;
};

struct MinusExpr final : Expr {
    using Expr::Expr;
    ExprPtr operand;
    Value Evaluate(Frame& frame) const override;
};

struct NotExpr final : Expr {
    using Expr::Expr;
    ExprPtr operand;
    Value Evaluate(Frame& frame) const override;
};

enum class BinaryOp : uint8_t {
    Add,
    Subtract,
    Multiply,
    Divide,
    Power,
    Equal,
    NotEqual,
    Less,
    Greater,
    LessEqual,
    GreaterEqual,
};

/// first op operand op operand ...: operators of one precedence, from the left.
struct ChainExpr final : Expr {
    using Expr::Expr;
    ExprPtr first;
    std::vector<std::pair<BinaryOp, ExprPtr>> rest;
    Value Evaluate(Frame& frame) const override;
};

struct LogicalExpr final : Expr {
    using Expr::Expr;
    bool isAnd = false;
    ExprList operands;
    Value Evaluate(Frame& frame) const override;
};

struct ConvertExpr final : Expr { // value as class as class ...
    using Expr::Expr;
    ExprPtr value;
    ExprList classes;
    Value Evaluate(Frame& frame) const override;
};

struct CallExpr final : Expr {
    using Expr::Expr;
    ExprPtr callee;
    ExprList arguments;
    std::vector<std::pair<std::wstring, ExprPtr>> keywords; // by lower-case name
    Value Evaluate(Frame& frame) const override;
};

struct AssignExpr final : Expr {
    using Expr::Expr;
    ExprPtr target;
    bool compound = false; // target op= value
    BinaryOp op = BinaryOp::Add;
    ExprPtr value;
    Value Evaluate(Frame& frame) const override;
};

struct IfExpr final : Expr {
    using Expr::Expr;
    ExprPairs branches; // condition, value
    ExprPtr otherwise;  // null: undefined
    Value Evaluate(Frame& frame) const override;
};

struct ForExpr final : Expr {
    using Expr::Expr;
    std::vector<uint32_t> names; // slots of the value, the index, the index among the kept ones
    ExprPtr first;               // the collection when `last` is null
    ExprPtr last;
    ExprPtr step;
    ExprPtr whileTrue;
    ExprPtr whereTrue;
    bool collect = false;
    ExprPtr body;
    std::vector<uint32_t> slots; // locals of one pass
    Value Evaluate(Frame& frame) const override;
};

struct WhileExpr final : Expr {
    using Expr::Expr;
    bool bodyFirst = false;
    ExprPtr condition;
    ExprPtr body;
    std::vector<uint32_t> slots;
    Value Evaluate(Frame& frame) const override;
};

struct CaseExpr final : Expr {
    using Expr::Expr;
    ExprPtr subject; // null: labels are conditions
    ExprPairs items;
    ExprPtr otherwise;
    Value Evaluate(Frame& frame) const override;
};

struct TryExpr final : Expr {
    using Expr::Expr;
    ExprPtr body;
    ExprPtr handler;
    Value Evaluate(Frame& frame) const override;
};

enum class JumpKind : uint8_t { Return, Exit, Continue };

struct JumpExpr final : Expr {
    using Expr::Expr;
    JumpKind kind = JumpKind::Return;
    ExprPtr value; // null: undefined
    Value Evaluate(Frame& frame) const override;
};

/// Thrown by a jump, to its loop or function.
struct JumpSignal {
    JumpKind kind;
    Value value;
};

struct Parameter {
    std::wstring keyword; // lower case; empty: by position
    ExprPtr value;        // a keyword parameter's default; null: unsupplied
    uint32_t slot = 0;
};

/// What a function value shares with the script that defined it, and outlives it with.
struct FunctionBody {
    std::wstring name;
    std::vector<Parameter> parameters;
    ExprPtr body;
    uint32_t slotCount = 0; // of its frame
};

struct FunctionExpr final : Expr {
    using Expr::Expr;
    std::shared_ptr<FunctionBody> function;
    Binding binding; // of its name
    Value Evaluate(Frame& frame) const override;
};

struct StructBody {
    struct Member {
        std::wstring name;
        bool isFunction = false;
        std::shared_ptr<FunctionBody> function; // or what gives the default; null: undefined
    };
    std::wstring name;
    std::vector<Member> members;
};

struct StructExpr final : Expr {
    using Expr::Expr;
    std::shared_ptr<StructBody> body;
    Binding binding;
    Value Evaluate(Frame& frame) const override;
};

/// local and global: each item a variable and, or null, its value.
struct DeclareExpr final : Expr {
    using Expr::Expr;
    std::vector<std::pair<Binding, ExprPtr>> items;
    Value Evaluate(Frame& frame) const override;
};

/// undo on|off (..): this host has no undo, so it only checks its switch.
struct UndoExpr final : Expr {
    using Expr::Expr;
    ExprPtr state;
    ExprPtr body;
    Value Evaluate(Frame& frame) const override;
};

} // namespace simhost::script
