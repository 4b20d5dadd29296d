// Any bytes as a script file: decoded, cut into tokens, parsed, scopes checked.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "simhost/script/check.h"
#include "simhost/script/source.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace simhost::script;
    const auto fault =
        CheckScript(DecodeSource(std::string_view(reinterpret_cast<const char*>(data), size)));
    // A fault always has a place to show the user.
    if (fault && fault->Where().line == 0)
        __builtin_trap();
    return 0;
}
