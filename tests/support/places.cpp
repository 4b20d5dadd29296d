// The one source that knows where it was built: all others compile to the same in any checkout.
#include "tests/support/places.h"

namespace brimwave::testing {

std::string SourcePath(const std::string& path) {
    return SOURCE_FOLDER "/" + path;
}

std::string ProgramPath(const std::string& name) {
    return PROGRAM_FOLDER "/" + name;
}

} // namespace brimwave::testing
