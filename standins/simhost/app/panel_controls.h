// The panel as its user knows it: the numbers of its controls.
#pragma once

namespace simhost {

inline constexpr const wchar_t* kPanelTitle = L"Brimwave Platform";
inline constexpr int kTokenEdit = 1003;
inline constexpr int kBalanceLabel = 1005;
inline constexpr int kFolderEdit = 1007;
inline constexpr int kBakeBox = 1010;
inline constexpr int kExportButton = 1011;
inline constexpr int kProgressBar = 1012;
inline constexpr int kStatusLabel = 1013;
inline constexpr int kJobLabel = 1014;
inline constexpr int kOlderTargetButton = 1017;
inline constexpr int kNewerTargetButton = 1018;

} // namespace simhost
