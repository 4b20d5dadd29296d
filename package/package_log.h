#pragma once
#include "package/utf8_store.h"

#include <initializer_list>

namespace brimwave {

/// Lines about one package, in the order in which they were found; they are written to a file
/// beside it.
class PackageLog {
  public:
    void Add(std::wstring_view line) { Add({line}); }
    /// One line, made of these parts.
    void Add(std::initializer_list<std::wstring_view> parts);
    [[nodiscard]] int LineCount() const { return count_; }
    /// All lines, each followed by a line feed.
    [[nodiscard]] const Utf8Store& Text() const { return text_; }

  private:
    Utf8Store text_;
    std::wstring line_; // kept for its memory
    int count_ = 0;
};

/// Path of the log file: the package's, its ending replaced by ".log".
[[nodiscard]] std::wstring LogPathFor(std::wstring_view packagePath);

/// Writes each line in UTF-8, followed by a line feed. A file that cannot be opened is left.
void WriteLogFile(const std::wstring& path, const PackageLog& log);

} // namespace brimwave
