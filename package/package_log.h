#pragma once
#include <string>
#include <string_view>
#include <vector>

namespace brimwave {

/// Lines about one package, in the order in which they were found; they are written to a file
/// beside it.
class PackageLog {
  public:
    void Add(std::wstring line) { lines_.push_back(std::move(line)); }
    [[nodiscard]] const std::vector<std::wstring>& Lines() const { return lines_; }

  private:
    std::vector<std::wstring> lines_;
};

/// Path of the log file: the package's, its ending replaced by ".log".
[[nodiscard]] std::wstring LogPathFor(std::wstring_view packagePath);

/// Writes each line in UTF-8, followed by a line feed. A file that cannot be opened is left.
void WriteLogFile(const std::wstring& path, const PackageLog& log);

} // namespace brimwave
