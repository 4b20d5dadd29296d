#pragma once
// Wide text on its way to a UTF-8 file, converted piece by piece.
#include "host/files.h"
#include "host/text.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace brimwave {

/// UTF-8 text in blocks: it grows without being moved, so that its memory stays near its length.
class Utf8Store {
  public:
    void Append(std::wstring_view text);
    [[nodiscard]] bool empty() const { return blocks_.empty(); }
    /// Visits the blocks in order: `visit(std::string_view bytes)`.
    template <class Visit>
    void ForEachBlock(Visit visit) const {
        for (const Block& block : blocks_)
            visit(std::string_view(block.bytes.get(), block.size));
    }

  private:
    // Each block is twice as large as the one before it, up to the largest size.
    static constexpr size_t firstBlock = maxUtf8Piece * 4;
    static constexpr size_t largestBlock = 1024 * 1024;
    struct Block {
        std::unique_ptr<char[]> bytes;
        size_t capacity = 0;
        size_t size = 0;
    };
    void AddBlock();
    std::vector<Block> blocks_;
};

/// A new file, written from the start. After a failure it takes nothing more.
class Utf8File {
  public:
    explicit Utf8File(const std::wstring& path) : file_(path) {}
    ~Utf8File() { Flush(); }
    Utf8File(const Utf8File&) = delete;
    Utf8File& operator=(const Utf8File&) = delete;

    void Write(std::wstring_view text);
    void Write(const Utf8Store& store);
    /// Writes what is still buffered; false when anything went wrong since the opening.
    [[nodiscard]] bool Finish();

  private:
    void Flush();

    NewFile file_;
    std::string buffer_;
};

} // namespace brimwave
