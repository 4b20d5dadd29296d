#pragma once
#include "maxtypes.h"

#include <string>

namespace simhost {

/// The host's export: the exporter is chosen by the class when one is given, else by the file's
/// extension. False when there is no such exporter or it refuses. Obeys the exporter faults that
/// the scene asks for.
bool ExportFile(const std::wstring& path, const Class_ID* exporter);

} // namespace simhost
