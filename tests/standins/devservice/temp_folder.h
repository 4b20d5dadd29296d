#pragma once
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace devservice::testing {

// A folder of a test's own, removed at its end.
class TempFolder {
  public:
    TempFolder() {
        std::string name =
            (std::filesystem::temp_directory_path() / "devservice_test_XXXXXX").string();
        path_ = mkdtemp(name.data());
    }
    ~TempFolder() { std::filesystem::remove_all(path_); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

    std::filesystem::path Write(const char* name, const std::string& bytes) const {
        std::ofstream(path_ / name, std::ios::binary) << bytes;
        return path_ / name;
    }

  private:
    std::filesystem::path path_;
};

inline std::string ReadAll(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace devservice::testing
