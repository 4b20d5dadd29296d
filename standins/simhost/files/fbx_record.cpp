#include "simhost/files/fbx_record.h"

#include <array>
#include <bit>
#include <limits>

#ifdef SIMHOST_ZLIB
#include <zlib.h>
#endif

namespace simhost {

static_assert(std::endian::native == std::endian::little, "the format is little-endian");

namespace {

constexpr std::size_t headerSize = 3 * sizeof(std::uint64_t) + 1;
// Setting up the packing of a shorter array takes longer than writing it.
constexpr std::size_t smallestCompressed = 1024;

std::uint32_t LengthField(std::size_t bytes) {
    if (bytes > std::numeric_limits<std::uint32_t>::max())
        throw FbxTooLarge("one value is larger than 4 GB");
    return static_cast<std::uint32_t>(bytes);
}

#ifdef SIMHOST_ZLIB
// zlib counts with 32 bits on Windows, and packing may make a little more of it.
constexpr std::size_t largestPacked = 0xf0000000u;

/// Packs bytes the way FBX arrays are packed (a zlib stream). False in a build without zlib or when
/// packing failed; the array is then written as it is, which every reader takes too.
bool Deflate(std::string_view plain, std::string& packed) {
    if (plain.size() > largestPacked)
        return false;
    const auto plainSize = static_cast<uLong>(plain.size());
    uLongf size = compressBound(plainSize);
    packed.resize(size);
    // The fast level: geometry hardly shrinks further at the slow ones.
    const int result = compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
                                 reinterpret_cast<const Bytef*>(plain.data()), plainSize, 1);
    packed.resize(size);
    return result == Z_OK;
}
#else
bool Deflate(std::string_view /*plain*/, std::string& /*packed*/) {
    return false;
}
#endif

} // namespace

void FbxRecordWriter::Open(std::string_view name) {
    if (!open_.empty())
        CloseValues(open_.back());
    Opened record;
    record.header = out_.size();
    Raw(std::array<std::uint64_t, 3>{});
    Raw(static_cast<std::uint8_t>(name.size()));
    out_ += name;
    record.values = out_.size();
    open_.push_back(record);
}

void FbxRecordWriter::CloseValues(Opened& record) {
    if (record.valuesClosed)
        return;
    Patch(record.header + sizeof(std::uint64_t),
          std::array<std::uint64_t, 2>{record.count, out_.size() - record.values});
    record.valuesClosed = true;
}

void FbxRecordWriter::Close(bool nested) {
    CloseValues(open_.back());
    if (nested)
        Null();
    Patch(open_.back().header, std::uint64_t{out_.size()});
    open_.pop_back();
}

void FbxRecordWriter::Null() {
    out_.append(headerSize, '\0');
}

void FbxRecordWriter::Bytes(char type, std::string_view bytes) {
    CountValue();
    Raw(type);
    Raw(LengthField(bytes.size()));
    out_ += bytes;
}

void FbxRecordWriter::Array(char type, const void* items, std::size_t count, std::size_t itemSize) {
    const std::string_view plain(static_cast<const char*>(items), count * itemSize);
    std::string packed;
    const std::uint32_t plainSize = LengthField(plain.size());
    const bool compressed =
        plain.size() >= smallestCompressed && Deflate(plain, packed) && packed.size() < plainSize;
    const std::string_view stored = compressed ? std::string_view(packed) : plain;
    CountValue();
    Raw(type);
    Raw(LengthField(count));
    Raw(static_cast<std::uint32_t>(compressed));
    Raw(LengthField(stored.size()));
    out_ += stored;
}

FbxInt32Slot FbxRecordWriter::LeafSlot(std::string_view name) {
    Open(name);
    Value(std::int32_t{0});
    const FbxInt32Slot slot{out_.size() - sizeof(std::int32_t)};
    Close(false);
    return slot;
}

void FbxRecordWriter::Fill(FbxInt32Slot slot, std::int32_t value) {
    Patch(slot.offset, value);
}

} // namespace simhost
