// The panel as its user knows it: the numbers of its controls.
#pragma once

namespace simhost {

inline constexpr const wchar_t* panelTitle = L"Brimwave Platform";
inline constexpr int tokenEdit = 1003;
inline constexpr int balanceLabel = 1005;
inline constexpr int folderEdit = 1007;
inline constexpr int bakeBox = 1010;
inline constexpr int exportButton = 1011;
inline constexpr int progressBar = 1012;
inline constexpr int statusLabel = 1013;
inline constexpr int jobLabel = 1014;
inline constexpr int olderTargetButton = 1017;
inline constexpr int newerTargetButton = 1018;

} // namespace simhost
