// Any bytes as a script file: decoded, cut into tokens, parsed, names settled.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "simhost/script/interpreter.h"
#include "simhost/script/source.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace simhost::script;
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    static Interpreter engine; // the names of earlier scripts stay, which only lets more pass
    const auto fault = engine.Check(DecodeSource(bytes));
    // A fault always has a place to show the user.
    if (fault && fault->Where().line == 0)
        __builtin_trap();
    return 0;
}
