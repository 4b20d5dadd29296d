#pragma once
// Files and folders of the system. Full paths may have any length.
#include "host/kernel_handle.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brimwave {

/// True for files and folders alike.
[[nodiscard]] bool PathExists(const std::wstring& path);

/// The file's bytes, held in memory once. Nothing when it cannot be opened or read to its end,
/// does not fit into memory, or is longer than `most`.
[[nodiscard]] std::optional<std::string> ReadWholeFile(const std::wstring& path,
                                                       std::uint64_t most = UINT64_MAX);

/// A new file, which takes the place of one that stands there. After a failure it takes nothing
/// more.
class NewFile {
  public:
    explicit NewFile(const std::wstring& path);

    void Write(std::string_view bytes);
    /// False when anything went wrong since the opening.
    [[nodiscard]] bool Good() const { return file_ != nullptr; }

  private:
    KernelHandle file_; // null after a failure
};

// None of these tells a failure: who needs the result finds out by itself.

void MakeFolder(const std::wstring& path);

/// Copies over whatever stands at `to`.
void CopyOver(const std::wstring& from, const std::wstring& to);

void RemoveFile(const std::wstring& path);

} // namespace brimwave
