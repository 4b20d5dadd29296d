// The records of an FBX file, binary or text: what the import library drops on its way (property
// types, exact names, connections) is read from here. Arrays and embedded media are left out: the
// library hands those through.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace sceneconv {

/// An array or a block of bytes stands as std::monostate, so that the others keep their places.
using FbxValue = std::variant<std::monostate, std::int64_t, double, std::string>;

struct FbxValues {
    std::vector<FbxValue> values;

    /// Value as text, number or integer; an empty text or zero where there is none of that kind.
    [[nodiscard]] std::string Text(std::size_t index = 0) const;
    [[nodiscard]] double Number(std::size_t index = 0) const;
    [[nodiscard]] std::int64_t Integer(std::size_t index = 0) const;

  private:
    template <typename T>
    [[nodiscard]] const T* Find(std::size_t index) const;
};

struct FbxRecord : FbxValues {
    std::string name;
    std::vector<FbxRecord> children;

    /// The first child of that name, or null.
    [[nodiscard]] const FbxRecord* Child(std::string_view childName) const;
};

/// What the head of a file says of itself.
struct FbxHead {
    bool isFbx = false;
    bool isBinary = false;
    std::uint32_t version = 0; ///< 7400 for 7.4; 0 when the head does not tell
};

[[nodiscard]] FbxHead ReadFbxHead(std::string_view bytes);

/// Reads all records of a whole file. Throws std::runtime_error when the file is damaged.
[[nodiscard]] std::vector<FbxRecord> ReadFbxRecords(std::string_view bytes);

[[nodiscard]] std::vector<FbxRecord> ReadBinaryFbx(std::string_view bytes, std::uint32_t version);
[[nodiscard]] std::vector<FbxRecord> ReadTextFbx(std::string_view bytes);

} // namespace sceneconv
