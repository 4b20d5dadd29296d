#include "sceneconv/fbx_records.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>
#include <stdexcept>

namespace sceneconv {

namespace {

constexpr std::string_view binaryMagic{"Kaydara FBX Binary  \0\x1a\0", 23};

std::uint32_t TextVersion(std::string_view head) {
    // "; FBX 7.4.0 project file" in the first line
    const std::size_t start = head.find("FBX ");
    if (start == std::string_view::npos)
        return 0;
    std::uint32_t parts[3] = {0, 0, 0};
    const char* at = head.data() + start + 4;
    const char* end = head.data() + head.size();
    for (std::uint32_t& part : parts) {
        const auto [next, error] = std::from_chars(at, end, part);
        if (error != std::errc{})
            return 0;
        at = next;
        if (at == end || *at != '.')
            break;
        ++at;
    }
    return parts[0] > 99 || parts[1] > 9 || parts[2] > 9
               ? 0
               : parts[0] * 1000 + parts[1] * 100 + parts[2] * 10;
}

} // namespace

const FbxRecord* FbxRecord::Child(std::string_view childName) const {
    const auto found = std::find_if(children.begin(), children.end(),
                                    [&](const FbxRecord& c) { return c.name == childName; });
    return found == children.end() ? nullptr : &*found;
}

template <typename T>
const T* FbxValues::Find(std::size_t index) const {
    return index < values.size() ? std::get_if<T>(&values[index]) : nullptr;
}

std::string FbxValues::Text(std::size_t index) const {
    const auto* text = Find<std::string>(index);
    return text ? *text : std::string();
}

double FbxValues::Number(std::size_t index) const {
    const auto* real = Find<double>(index);
    const auto* whole = Find<std::int64_t>(index);
    return real ? *real : whole ? static_cast<double>(*whole) : 0;
}

std::int64_t FbxValues::Integer(std::size_t index) const {
    constexpr double limit = 9.0e18;
    if (const auto* real = Find<double>(index))
        return *real > -limit && *real < limit ? static_cast<std::int64_t>(*real) : 0;
    const auto* whole = Find<std::int64_t>(index);
    return whole ? *whole : 0;
}

FbxHead ReadFbxHead(std::string_view bytes) {
    FbxHead head;
    if (bytes.substr(0, binaryMagic.size()) == binaryMagic && bytes.size() >= 27) {
        head.isFbx = head.isBinary = true;
        static_assert(std::endian::native == std::endian::little);
        std::memcpy(&head.version, bytes.data() + binaryMagic.size(), sizeof head.version);
        return head;
    }
    const std::string_view start = bytes.substr(0, 1024);
    if (start.find("; FBX ") != std::string_view::npos ||
        start.find("FBXHeaderExtension") != std::string_view::npos) {
        head.isFbx = true;
        head.version = TextVersion(start);
    }
    return head;
}

std::vector<FbxRecord> ReadFbxRecords(std::string_view bytes) {
    const FbxHead head = ReadFbxHead(bytes);
    if (!head.isFbx)
        throw std::runtime_error("not an FBX file");
    return head.isBinary ? ReadBinaryFbx(bytes, head.version) : ReadTextFbx(bytes);
}

} // namespace sceneconv
