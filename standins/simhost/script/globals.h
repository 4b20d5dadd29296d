#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "simhost/script/value.h"

namespace simhost::script {

class Interpreter;

/// A global variable. Those with a `read` function are the host's own, such as `objects`.
struct Global {
    std::wstring name;
    Value value;
    std::function<Value(Interpreter&)> read;
    std::function<void(Interpreter&, const Value&)> write; // only beside `read`; empty: constant
};

/// Global variables by name, case ignored. A global never moves or goes away.
class GlobalTable {
  public:
    /// Null when no such global exists.
    [[nodiscard]] Global* Find(std::wstring_view name) const;
    /// The global of that name, made (undefined) when there is none.
    Global& Declare(std::wstring_view name);

    [[nodiscard]] const std::unordered_map<std::wstring, std::unique_ptr<Global>>& All() const {
        return globals_;
    }

  private:
    std::unordered_map<std::wstring, std::unique_ptr<Global>> globals_; // by lower-case name
};

} // namespace simhost::script
