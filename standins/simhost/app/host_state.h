#pragma once
#include <string>

namespace simhost {

/// Opens the scene file; throws StartError with the reader's message. An empty path opens an
/// empty scene that was never saved.
void OpenScene(const std::wstring& file);

/// The folder that the host names for plug-in settings, whatever the scene says. An empty one
/// means a folder of this user's, which is made when it is missing.
void SetSettingsFolder(const std::wstring& folder);

} // namespace simhost
