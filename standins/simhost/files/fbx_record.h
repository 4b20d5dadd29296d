#pragma once
// The node records of a binary FBX file, version 7.5 (64-bit offsets, so that no file is too
// long). A record is a name, a list of typed values and nested records.
#include <cstdint>
#include <cstring>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace simhost {

/// A single value passes what the format can count (4 GB).
class FbxTooLarge : public std::length_error {
  public:
    using std::length_error::length_error;
};

/// Bytes that are not text.
struct FbxRaw {
    std::string_view bytes;
};

/// One character: the format's own way with a few switches.
struct FbxChar {
    char value;
};

/// A place in the file for a number that is not known yet.
struct FbxInt32Slot {
    std::uint64_t offset = 0;
};

class FbxRecordWriter {
  public:
    static constexpr std::uint32_t version = 7500;

    /// Appends to `out`, where the offsets in the file begin at 0.
    explicit FbxRecordWriter(std::string& out) : out_(out) {}

    /// Opens a record that holds nested records; its own values come first.
    template <class... Values>
    void Begin(std::string_view name, const Values&... values) {
        Open(name);
        (Value(values), ...);
    }
    void End() { Close(true); }
    /// A record of values alone.
    template <class... Values>
    void Leaf(std::string_view name, const Values&... values) {
        BeginLeaf(name, values...);
        EndLeaf();
    }
    template <class... Values>
    void BeginLeaf(std::string_view name, const Values&... values) {
        Open(name);
        (Value(values), ...);
    }
    void EndLeaf() { Close(false); }

    // One value of the record opened last, before its first nested record. Texts are UTF-8.
    void Value(std::int32_t v) { Number('I', v); }
    void Value(std::int64_t v) { Number('L', v); }
    void Value(float v) { Number('F', v); }
    void Value(double v) { Number('D', v); }
    void Value(FbxChar v) { Number('C', v.value); }
    void Value(std::string_view text) { Bytes('S', text); }
    void Value(const std::string& text) { Bytes('S', text); }
    void Value(const char* text) { Bytes('S', text); }
    void Value(FbxRaw raw) { Bytes('R', raw.bytes); }
    void Value(std::span<const double> v) { Array('d', v.data(), v.size(), sizeof(double)); }
    void Value(std::span<const std::int32_t> v) {
        Array('i', v.data(), v.size(), sizeof(std::int32_t));
    }
    void Value(const std::vector<double>& v) { Value(std::span<const double>(v)); }
    void Value(const std::vector<std::int32_t>& v) { Value(std::span<const std::int32_t>(v)); }

    /// An integer record whose number follows with Fill.
    [[nodiscard]] FbxInt32Slot LeafSlot(std::string_view name);
    void Fill(FbxInt32Slot slot, std::int32_t value);

    /// The empty record that ends a list of records.
    void Null();

  private:
    struct Opened {
        std::uint64_t header = 0; // where the record's counts stand
        std::uint64_t values = 0; // where its values begin
        std::uint64_t count = 0;  // of its values
        bool valuesClosed = false;
    };

    void Open(std::string_view name);
    void Close(bool nested);
    void CloseValues(Opened& record);
    void Bytes(char type, std::string_view bytes);
    void Array(char type, const void* items, std::size_t count, std::size_t itemSize);
    void CountValue() { ++open_.back().count; }
    template <class T>
    void Raw(T v) {
        out_.append(reinterpret_cast<const char*>(&v), sizeof v);
    }
    /// Replaces a number that stands in the file already.
    template <class T>
    void Patch(std::size_t offset, T v) {
        std::memcpy(out_.data() + offset, &v, sizeof v);
    }
    template <class T>
    void Number(char type, T v) {
        CountValue();
        Raw(type);
        Raw(v);
    }

    std::string& out_;
    std::vector<Opened> open_;
};

} // namespace simhost
