#pragma once
#include "simhost/scene/class_info.h"

namespace simhost {

/// Reads the embedded catalogue files. A fault in them ends the program with a message: they are
/// part of it.
[[nodiscard]] std::vector<ClassPtr> ReadCatalogue();

/// A class id for a class of which only the name is known; the same each time.
[[nodiscard]] Class_ID ClassIdOfName(std::wstring_view name);

} // namespace simhost
