#pragma once
// Bytes of a file in the making, in blocks, so that a file of gigabytes grows without copying
// what stands already.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace simhost {

class FbxBytes {
  public:
    void Append(const void* data, std::size_t size);
    /// Replaces bytes that were appended before; the range has to lie within them.
    void Patch(std::uint64_t offset, const void* data, std::size_t size);
    [[nodiscard]] std::uint64_t Size() const { return size_; }
    /// The bytes in order, at most a block each.
    [[nodiscard]] std::vector<std::string_view> Blocks() const;

  private:
    static constexpr std::size_t blockSize = std::size_t{1} << 20;
    std::vector<std::unique_ptr<char[]>> blocks_;
    std::uint64_t size_ = 0;
};

} // namespace simhost
