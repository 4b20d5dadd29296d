#pragma once
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "simhost/script/object.h"

namespace simhost::script {

/// A global variable. Those with a `read` function are the host's own, such as `objects`: they
/// cannot be assigned.
struct Global {
    std::wstring name;
    Value value;
    std::shared_ptr<Frame> home; // that of the value: stays as long as a global function needs it
    std::function<Value()> read;
};

/// Global variables by name, case ignored. A global never moves or goes away.
class GlobalTable {
  public:
    /// Null when no such global exists.
    [[nodiscard]] Global* Find(std::wstring_view name) const;
    /// The global of that name, made (undefined) when there is none.
    Global& Declare(std::wstring_view name);
    /// Takes all values away.
    void Clear();

  private:
    std::unordered_map<std::wstring, std::unique_ptr<Global>> globals_; // by lower-case name
};

} // namespace simhost::script
