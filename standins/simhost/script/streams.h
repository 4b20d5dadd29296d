#pragma once
#include <algorithm>
#include <string>

#include "simhost/script/heap.h"
#include "simhost/script/object.h"

namespace simhost::script {

/// A text that scripts read from and write to: a string stream, or a file (then a change reaches
/// the file when the stream is flushed, closed or let go of).
class StreamObject final : public Object {
  public:
    explicit StreamObject(std::wstring text);
    /// `path`: the file that receives the text; empty when it is only read.
    StreamObject(std::wstring text, std::wstring path);
    ~StreamObject() override;

    void Write(Interpreter& interpreter, std::wstring_view text);
    [[nodiscard]] bool AtEnd() const { return at_ >= text_.size(); }
    /// Up to the end of the line, which is skipped.
    std::wstring ReadLine();
    std::wstring ReadUnits(size_t count);
    /// Up to a unit of `delimiters`, which is skipped; the rest when there is none.
    std::wstring ReadUntil(const std::wstring& delimiters);
    /// Moves behind the next `text`; false, and to the end, when there is none.
    bool SkipTo(const std::wstring& text);
    [[nodiscard]] size_t Position() const { return at_; }
    void Seek(size_t position) { at_ = std::min(position, text_.size()); }
    void SeekEnd() { at_ = text_.size(); }
    bool Flush();
    void Close();
    [[nodiscard]] bool IsOpen() const { return open_; }

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override {
        return isFile_ ? L"FileStream" : L"StringStream";
    }

  private:
    std::wstring text_;
    std::wstring path_;
    size_t at_ = 0;
    bool isFile_ = false;
    bool changed_ = false;
    bool open_ = true;
    MemoryShare share_;
};

} // namespace simhost::script
