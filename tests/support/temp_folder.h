#pragma once
#include "host/text.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace brimwave::testing {

/// A folder of one test, removed with all its contents at the end. Names and paths are wide, as
/// the product takes them: UTF-16 units, and "\" between folders.
class TempFolder {
  public:
    TempFolder() {
        path_ = std::filesystem::temp_directory_path() /
                ("brimwave_" + std::to_string(std::random_device()()));
        std::filesystem::create_directories(path_);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    /// The full path of `name` inside; of the folder itself when it is empty.
    [[nodiscard]] std::wstring Path(std::wstring_view name = {}) const {
        const std::wstring path = path_.wstring(); // temporary folders are plain ASCII
        return name.empty() ? path : path + L"\\" + std::wstring(name);
    }

    /// A file in it, with the folders on its way.
    std::wstring Write(std::wstring_view name, std::string_view bytes) {
        const std::filesystem::path file = Native(Path(name));
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << bytes;
        return Path(name);
    }

    [[nodiscard]] const std::filesystem::path& NativePath() const { return path_; }

    /// A wide path as the system's own.
    [[nodiscard]] static std::filesystem::path Native(std::wstring_view path) {
        const std::string utf8 = WideToUtf8(path);
        std::u8string text(utf8.begin(), utf8.end());
        std::replace(text.begin(), text.end(), u8'\\', u8'/');
        return text;
    }

    [[nodiscard]] static std::string Read(std::wstring_view path) {
        std::ifstream file(Native(path), std::ios::binary);
        std::ostringstream bytes; // a byte at a time, a large file takes half a minute here
        bytes << file.rdbuf();
        return std::move(bytes).str();
    }

    [[nodiscard]] static bool Exists(std::wstring_view path) {
        return std::filesystem::exists(Native(path));
    }

  private:
    std::filesystem::path path_;
};

} // namespace brimwave::testing
