#pragma once
// The tree of one top-level expression. The parser makes it, the scope pass fills in what names
// stand for, the evaluator walks it. Long chains (a + b + c.., else if.., x.y.z) are lists or
// bounded, so that the depth of the tree is the depth of the brackets in the text.
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "simhost/script/error.h"
#include "simhost/script/value.h"

namespace simhost::script {

struct Global;

enum class ExprKind : uint8_t {
    Literal,
    Variable,
    Path,
    Array,
    BitArray,
    Point,
    Block,
    Property,
    Index,
    Unary,
    Chain,
    Logical,
    Convert,
    Call,
    Assign,
    If,
    For,
    While,
    Case,
    Try,
    Jump,
    Function,
    Struct,
    Declare,
    Context,
    Definition,
    Handler,
    Item,
    Unsupported,
};

struct Expr {
    Expr(ExprKind kind_, Position where_) : kind(kind_), where(where_) {}
    virtual ~Expr() = default;
    Expr(const Expr&) = delete;
    Expr& operator=(const Expr&) = delete;

    ExprKind kind;
    Position where;
};
using ExprPtr = std::unique_ptr<Expr>;
using ExprList = std::vector<ExprPtr>;

/// What a name stands for.
struct Binding {
    enum class Kind : uint8_t {
        Unbound,
        Global, // `global`
        Local,  // slot of the running function or top-level expression
        Outer,  // slot of the top-level expression, seen from a function in it
        Member, // member of the struct instance whose function runs
        Screen, // a name of a user-interface definition; never evaluated
    };
    Kind kind = Kind::Unbound;
    bool byReference = false; // a parameter declared &p
    uint32_t slot = 0;
    Global* global = nullptr;
};

struct NamedExpr {
    std::wstring name;
    ExprPtr value; // null: `key:` alone
};

struct LiteralExpr : Expr {
    LiteralExpr(Position p, Value v) : Expr(ExprKind::Literal, p), value(std::move(v)) {}
    Value value;
};

struct VariableExpr : Expr {
    explicit VariableExpr(Position p) : Expr(ExprKind::Variable, p) {}
    std::wstring name;
    bool global = false; // ::name
    Binding binding;
};

/// $box*: the text without "$"; empty for the selection.
struct PathExpr : Expr {
    explicit PathExpr(Position p) : Expr(ExprKind::Path, p) {}
    std::wstring pattern;
};

struct ListExpr : Expr { // Array: elements. Point: two to four.
    ListExpr(Position p, ExprKind k) : Expr(k, p) {}
    ExprList items;
};

struct BitArrayExpr : Expr {
    explicit BitArrayExpr(Position p) : Expr(ExprKind::BitArray, p) {}
    std::vector<std::pair<ExprPtr, ExprPtr>> ranges; // second null: one bit
};

struct BlockExpr : Expr {
    explicit BlockExpr(Position p) : Expr(ExprKind::Block, p) {}
    ExprList items;
    std::vector<uint32_t> slots; // locals that begin their life here
};

struct PropertyExpr : Expr {
    explicit PropertyExpr(Position p) : Expr(ExprKind::Property, p) {}
    ExprPtr object;
    std::wstring name;
};

struct IndexExpr : Expr {
    explicit IndexExpr(Position p) : Expr(ExprKind::Index, p) {}
    ExprPtr object;
    ExprPtr index;
};

enum class UnaryOp : uint8_t { Minus, Not, Reference, Dereference };

struct UnaryExpr : Expr {
    explicit UnaryExpr(Position p) : Expr(ExprKind::Unary, p) {}
    UnaryOp op = UnaryOp::Minus;
    ExprPtr operand;
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
struct ChainExpr : Expr {
    explicit ChainExpr(Position p) : Expr(ExprKind::Chain, p) {}
    ExprPtr first;
    std::vector<std::pair<BinaryOp, ExprPtr>> rest;
};

struct LogicalExpr : Expr {
    explicit LogicalExpr(Position p) : Expr(ExprKind::Logical, p) {}
    bool isAnd = false;
    ExprList operands;
};

struct ConvertExpr : Expr { // value as class as class ...
    explicit ConvertExpr(Position p) : Expr(ExprKind::Convert, p) {}
    ExprPtr value;
    ExprList classes;
};

struct CallExpr : Expr {
    explicit CallExpr(Position p) : Expr(ExprKind::Call, p) {}
    ExprPtr callee;
    ExprList arguments;
    std::vector<NamedExpr> keywords;
};

struct AssignExpr : Expr {
    explicit AssignExpr(Position p) : Expr(ExprKind::Assign, p) {}
    ExprPtr target;
    bool compound = false; // target op= value
    BinaryOp op = BinaryOp::Add;
    ExprPtr value;
};

struct IfExpr : Expr {
    explicit IfExpr(Position p) : Expr(ExprKind::If, p) {}
    std::vector<std::pair<ExprPtr, ExprPtr>> branches; // condition, value
    ExprPtr otherwise;                                 // null: undefined
};

struct ForExpr : Expr {
    explicit ForExpr(Position p) : Expr(ExprKind::For, p) {}
    std::vector<std::wstring> names; // value, index, index among the kept ones
    std::vector<uint32_t> nameSlots;
    ExprPtr first; // the collection when `last` is null
    ExprPtr last;
    ExprPtr step;
    ExprPtr whileTrue;
    ExprPtr where_;
    bool collect = false;
    ExprPtr body;
    std::vector<uint32_t> slots; // implicit locals of the loop
};

struct WhileExpr : Expr {
    explicit WhileExpr(Position p) : Expr(ExprKind::While, p) {}
    bool bodyFirst = false;
    ExprPtr condition;
    ExprPtr body;
    std::vector<uint32_t> slots;
};

struct CaseExpr : Expr {
    explicit CaseExpr(Position p) : Expr(ExprKind::Case, p) {}
    ExprPtr subject; // null: labels are conditions
    std::vector<std::pair<ExprPtr, ExprPtr>> items;
    ExprPtr otherwise;
};

struct TryExpr : Expr {
    explicit TryExpr(Position p) : Expr(ExprKind::Try, p) {}
    ExprPtr body;
    ExprPtr handler;
};

enum class JumpKind : uint8_t { Return, Exit, Continue };

struct JumpExpr : Expr {
    explicit JumpExpr(Position p) : Expr(ExprKind::Jump, p) {}
    JumpKind jump = JumpKind::Return;
    ExprPtr value;
    /// The value of every construct between this and its target is handed up unchanged, so the
    /// evaluator can leave by a flag; otherwise it has to throw.
    bool direct = false;
};

struct Parameter {
    std::wstring name;
    bool keyword = false;
    bool byReference = false;
    ExprPtr value; // a keyword parameter's default; null: unsupplied
    uint32_t slot = 0;
};

/// What a function value shares with the script that defined it, and outlives it with.
struct FunctionBody {
    Position where;
    std::wstring name;
    bool mapped = false;
    std::vector<Parameter> parameters;
    ExprPtr body;
    uint32_t slotCount = 0; // of its frame
};

struct FunctionExpr : Expr {
    explicit FunctionExpr(Position p) : Expr(ExprKind::Function, p) {}
    std::shared_ptr<FunctionBody> function;
    Binding binding; // of its name
};

struct StructMember {
    std::wstring name; // an event's for a handler
    Position where;
    bool isPrivate = false;
    bool isEvent = false;                   // on create do ..
    std::shared_ptr<FunctionBody> function; // a member function or handler, or
    ExprPtr value;                          // a data member's default; null: undefined
    uint32_t slotCount = 0;                 // of the default's frame
};

struct StructBody {
    std::wstring name;
    std::vector<StructMember> members;
};

struct StructExpr : Expr {
    explicit StructExpr(Position p) : Expr(ExprKind::Struct, p) {}
    std::shared_ptr<StructBody> body;
    Binding binding;
};

enum class DeclareScope : uint8_t { Local, Global, Persistent };

struct DeclareExpr : Expr {
    explicit DeclareExpr(Position p) : Expr(ExprKind::Declare, p) {}
    DeclareScope scope = DeclareScope::Local;
    struct Item {
        std::wstring name;
        Position where;
        ExprPtr value; // null: undefined
        Binding binding;
    };
    std::vector<Item> items;
};

/// undo off (..), at time t (..), in coordsys x (..), with name value (..); `set` has no body.
struct ContextExpr : Expr {
    explicit ContextExpr(Position p) : Expr(ExprKind::Context, p) {}
    std::wstring name; // lower case: "undo", "at time", "in coordsys", "about", "redraw", ...
    ExprList arguments;
    ExprPtr body;
};

/// rollout, utility, macroScript, plugin, rcmenu, tool, attributes, parameters, group: parsed
/// and checked, not evaluated.
struct DefinitionExpr : Expr {
    explicit DefinitionExpr(Position p) : Expr(ExprKind::Definition, p) {}
    std::wstring type; // lower case
    std::wstring name;
    ExprList arguments;
    std::vector<NamedExpr> keywords;
    ExprList members;
};

/// on <words> do <body>
struct HandlerExpr : Expr {
    explicit HandlerExpr(Position p) : Expr(ExprKind::Handler, p) {}
    std::vector<std::wstring> words;
    ExprPtr body;
};

/// A control of a rollout, an entry of a menu or of a parameter block.
struct ItemExpr : Expr {
    explicit ItemExpr(Position p) : Expr(ExprKind::Item, p) {}
    std::wstring type;
    std::wstring name;
    ExprList arguments;
    std::vector<NamedExpr> keywords;
};

/// Read and refused when it runs: max commands, when handlers, resources, the Listener's "?".
struct UnsupportedExpr : Expr {
    explicit UnsupportedExpr(Position p) : Expr(ExprKind::Unsupported, p) {}
    std::wstring what;
    ExprList parts;
    ExprPtr body;
};

} // namespace simhost::script
