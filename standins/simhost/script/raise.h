#pragma once
// The host's error messages, in one place.
#include <string_view>

#include "simhost/script/value.h"

namespace simhost::script {

[[noreturn]] void RaiseRuntime(std::wstring message);
/// Unable to convert: <value> to type: <type>
[[noreturn]] void RaiseConversion(const Value& value, std::wstring_view type);
/// Unknown property: "<name>" in <value>
[[noreturn]] void RaiseUnknownProperty(std::wstring_view name, const Value& value);
/// No "<function>" function for <value>
[[noreturn]] void RaiseNoFunction(std::wstring_view function, const Value& value);
/// Argument count error: <function> wanted <wanted>, got <got>
[[noreturn]] void RaiseArgumentCount(std::wstring_view function, size_t wanted, size_t got);
/// Type error: Call needs function or class, got: <value>
[[noreturn]] void RaiseNotCallable(const Value& value);

} // namespace simhost::script
