#include "sceneconv/fbx_records.h"

#include <bit>
#include <cstring>
#include <stdexcept>

namespace sceneconv {

namespace {

// Real files nest a handful of levels; more is an attack on the stack.
constexpr int deepest = 40;
constexpr std::size_t headSize = 27;

class BinaryReader {
  public:
    BinaryReader(std::string_view bytes, bool wide) : bytes_(bytes), wide_(wide) {}

    std::vector<FbxRecord> ReadAll() {
        std::vector<FbxRecord> records;
        at_ = headSize;
        while (at_ < bytes_.size()) {
            FbxRecord record;
            if (!ReadRecord(record, bytes_.size(), 0))
                break;
            records.push_back(std::move(record));
        }
        return records;
    }

  private:
    [[noreturn]] static void Damaged() { throw std::runtime_error("damaged FBX record"); }

    template <typename T>
    T Take() {
        static_assert(std::endian::native == std::endian::little);
        if (bytes_.size() - at_ < sizeof(T))
            Damaged();
        T value;
        std::memcpy(&value, bytes_.data() + at_, sizeof(T));
        at_ += sizeof(T);
        return value;
    }

    std::uint64_t TakeSize() { return wide_ ? Take<std::uint64_t>() : Take<std::uint32_t>(); }

    std::string_view TakeBytes(std::uint64_t count) {
        if (bytes_.size() - at_ < count)
            Damaged();
        const std::string_view taken = bytes_.substr(at_, static_cast<std::size_t>(count));
        at_ += taken.size();
        return taken;
    }

    /// False at the empty record that closes a list.
    bool ReadRecord(FbxRecord& record, std::size_t limit, int depth) {
        const std::uint64_t end = TakeSize();
        const std::uint64_t valueCount = TakeSize();
        const std::uint64_t valueBytes = TakeSize();
        record.name = TakeBytes(Take<std::uint8_t>());
        if (end == 0)
            return false;
        if (depth > deepest || end > limit || end < at_ || valueBytes > end - at_ ||
            valueCount > valueBytes) {
            Damaged();
        }
        const std::size_t valuesEnd = at_ + static_cast<std::size_t>(valueBytes);
        record.values.reserve(static_cast<std::size_t>(valueCount));
        for (std::uint64_t i = 0; i < valueCount; ++i)
            record.values.push_back(ReadValue());
        at_ = valuesEnd;
        while (at_ < end) {
            FbxRecord child;
            if (!ReadRecord(child, static_cast<std::size_t>(end), depth + 1))
                break;
            record.children.push_back(std::move(child));
        }
        at_ = static_cast<std::size_t>(end);
        return true;
    }

    FbxValue ReadValue() {
        switch (Take<char>()) {
        case 'C':
        case 'B':
            return std::int64_t{Take<std::int8_t>()};
        case 'Y':
            return std::int64_t{Take<std::int16_t>()};
        case 'I':
            return std::int64_t{Take<std::int32_t>()};
        case 'L':
            return Take<std::int64_t>();
        case 'F':
            return double{Take<float>()};
        case 'D':
            return Take<double>();
        case 'S':
            return std::string(TakeBytes(Take<std::uint32_t>()));
        case 'R':
            TakeBytes(Take<std::uint32_t>());
            return {};
        case 'b':
        case 'c':
            return SkipArray(1);
        case 'i':
        case 'f':
            return SkipArray(4);
        case 'l':
        case 'd':
            return SkipArray(8);
        default:
            Damaged();
        }
    }

    FbxValue SkipArray(std::uint64_t elementSize) {
        const std::uint64_t count = Take<std::uint32_t>();
        const bool packed = Take<std::uint32_t>() != 0;
        const std::uint64_t packedSize = Take<std::uint32_t>();
        TakeBytes(packed ? packedSize : count * elementSize);
        return {};
    }

    std::string_view bytes_;
    bool wide_;
    std::size_t at_ = 0;
};

} // namespace

std::vector<FbxRecord> ReadBinaryFbx(std::string_view bytes, std::uint32_t version) {
    return BinaryReader(bytes, version >= 7500).ReadAll();
}

} // namespace sceneconv
