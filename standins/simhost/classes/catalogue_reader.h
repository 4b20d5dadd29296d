#pragma once
#include "simhost/classes/class_info.h"

namespace simhost {

/// Reads the embedded catalogue files. A fault in them ends the program with a message: they are
/// part of it.
[[nodiscard]] std::vector<ClassPtr> ReadCatalogue();

} // namespace simhost
