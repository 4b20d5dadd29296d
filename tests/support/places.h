#pragma once
#include <string>

namespace brimwave::testing {

/// A file of the sources by its path from their root, such as "samples/room/room.json".
[[nodiscard]] std::string SourcePath(const std::string& path);
/// A program of this build by its name.
[[nodiscard]] std::string ProgramPath(const std::string& name);

} // namespace brimwave::testing
