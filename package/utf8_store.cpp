#include "package/utf8_store.h"

#include <algorithm>

namespace brimwave {

void Utf8Store::AddBlock() {
    const size_t capacity =
        blocks_.empty() ? firstBlock : std::min(blocks_.back().capacity * 2, largestBlock);
    blocks_.push_back({std::make_unique_for_overwrite<char[]>(capacity), capacity, 0});
}

void Utf8Store::Append(std::wstring_view text) {
    while (!text.empty()) {
        const size_t length = Utf8PieceLength(text);
        if (blocks_.empty() || blocks_.back().capacity - blocks_.back().size < MaxUtf8Size(length))
            AddBlock();
        Block& block = blocks_.back();
        block.size += ConvertUtf8Piece(text.substr(0, length), block.bytes.get() + block.size);
        text.remove_prefix(length);
    }
}

void Utf8File::Write(std::wstring_view text) {
    while (!text.empty() && file_.Good()) {
        const size_t length = Utf8PieceLength(text);
        const size_t size = buffer_.size();
        buffer_.resize(size + MaxUtf8Size(length));
        buffer_.resize(size + ConvertUtf8Piece(text.substr(0, length), buffer_.data() + size));
        text.remove_prefix(length);
        if (buffer_.size() >= maxUtf8Piece)
            Flush();
    }
}

void Utf8File::Write(const Utf8Store& store) {
    Flush();
    store.ForEachBlock([this](std::string_view bytes) { file_.Write(bytes); });
}

bool Utf8File::Finish() {
    Flush();
    return file_.Good();
}

void Utf8File::Flush() {
    file_.Write(buffer_);
    buffer_.clear();
}

} // namespace brimwave
