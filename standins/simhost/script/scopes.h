#pragma once
// What each name of a script stands for, settled while the script is parsed.
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "simhost/script/error.h"
#include "simhost/script/globals.h"

namespace simhost::script {

/// What a name stands for.
struct Binding {
    enum class Kind : uint8_t {
        Global,
        Local,  // slot of the running function or top-level expression
        Outer,  // slot of the top-level expression, seen from a function in it
        Member, // member of the struct instance whose function runs
    };
    Kind kind = Kind::Global;
    uint32_t slot = 0;
    Global* global = nullptr;
};

/// The scopes around the place that the parser has reached. Throws ScriptError (Compile) for what
/// the language refuses before anything runs.
class Scopes {
  public:
    explicit Scopes(GlobalTable& globals) : globals_(globals) {}

    enum class Use { Read, Assign, Define };
    /// The meaning of a name. One that nobody knows is an error when it is read, else a new local
    /// of the innermost scope (outside of all scopes a global). A definition takes no name of an
    /// outer function, where everything else is refused.
    Binding Find(const std::wstring& name, Position where, Use use);
    /// ::name, which need not be known.
    Binding FindGlobal(const std::wstring& name) {
        return {Binding::Kind::Global, 0, &globals_.Declare(name)};
    }
    /// A local of the innermost scope. Declaring a name again there gives the same variable.
    Binding DeclareLocal(const std::wstring& name, Position where);
    /// A global; in the innermost scope the name means it from here on.
    Binding DeclareGlobal(const std::wstring& name);

    // Scopes inside each other: blocks and loops, structs, functions. What begins must be ended
    // innermost first.
    void BeginBlock() { scopes_.push_back({{}, {}, frames_.size(), false}); }
    /// The slots of the locals, which begin their life with the block.
    std::vector<uint32_t> EndBlock();
    void BeginStruct();
    void DeclareMember(const std::wstring& name, uint32_t index);
    void BeginFunction();
    /// The number of slots that a call needs.
    uint32_t EndFunction();

    /// Begins a top-level expression anew.
    void Reset();
    /// The number of slots of the top-level expression so far.
    [[nodiscard]] uint32_t TopSlots() const { return frames_[0]; }

  private:
    struct Scope {
        std::unordered_map<std::wstring, Binding> names; // by lower-case name
        std::vector<uint32_t> slots;
        size_t depth = 0; // of functions around it
        bool isStruct = false;
    };

    GlobalTable& globals_;
    std::vector<Scope> scopes_;
    std::vector<uint32_t> frames_{0}; // slots of the top-level expression and of the functions
};

} // namespace simhost::script
