#include "package/utf8_store.h"

#include "host/long_path.h"

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

Utf8File::Utf8File(const std::wstring& path)
    : file_(CreateFileW(LongPath(path).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0,
                        nullptr)),
      good_(file_ != INVALID_HANDLE_VALUE) {}

Utf8File::~Utf8File() {
    if (file_ == INVALID_HANDLE_VALUE)
        return;
    Flush();
    CloseHandle(file_);
}

void Utf8File::Write(std::wstring_view text) {
    while (!text.empty() && good_) {
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
    store.ForEachBlock([this](const char* bytes, size_t size) { WriteBytes(bytes, size); });
}

bool Utf8File::Finish() {
    Flush();
    return good_;
}

void Utf8File::Flush() {
    WriteBytes(buffer_.data(), buffer_.size());
    buffer_.clear();
}

void Utf8File::WriteBytes(const char* bytes, size_t size) {
    while (size > 0 && good_) {
        const auto part = static_cast<DWORD>(std::min<size_t>(size, 1u << 20));
        DWORD written = 0;
        good_ = WriteFile(file_, bytes, part, &written, nullptr) && written == part;
        bytes += part;
        size -= part;
    }
}

} // namespace brimwave
