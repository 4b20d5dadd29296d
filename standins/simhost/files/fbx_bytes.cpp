#include "simhost/files/fbx_bytes.h"

#include <algorithm>
#include <cstring>

namespace simhost {

void FbxBytes::Append(const void* data, std::size_t size) {
    const std::uint64_t start = size_;
    while (blocks_.size() * blockSize < start + size)
        blocks_.emplace_back(new char[blockSize]);
    size_ += size;
    Patch(start, data, size);
}

void FbxBytes::Patch(std::uint64_t offset, const void* data, std::size_t size) {
    const char* from = static_cast<const char*>(data);
    while (size > 0) {
        const std::size_t within = static_cast<std::size_t>(offset % blockSize);
        const std::size_t part = std::min(size, blockSize - within);
        std::memcpy(blocks_[static_cast<std::size_t>(offset / blockSize)].get() + within, from,
                    part);
        from += part;
        offset += part;
        size -= part;
    }
}

std::vector<std::string_view> FbxBytes::Blocks() const {
    std::vector<std::string_view> views;
    std::uint64_t left = size_;
    for (const auto& block : blocks_) {
        const auto part = static_cast<std::size_t>(std::min<std::uint64_t>(left, blockSize));
        views.emplace_back(block.get(), part);
        left -= part;
    }
    return views;
}

} // namespace simhost
