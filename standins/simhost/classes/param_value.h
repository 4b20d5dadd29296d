#pragma once
// Values of parameters as the stand-in host keeps them.
#include "color.h"
#include "matrix3.h"
#include "paramtype.h"
#include "ref.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace simhost {

/// A text that can be null.
using Text = std::optional<std::wstring>;

/// A reference that turns null by itself when what it points to is deleted.
template <class T>
class Ref {
  public:
    Ref() = default;
    Ref(T* target) : handle_(Animatable::GetHandleByAnim(target)) {}
    [[nodiscard]] T* Get() const { return static_cast<T*>(Animatable::GetAnimByHandle(handle_)); }
    [[nodiscard]] AnimHandle Handle() const { return handle_; }
    friend bool operator==(const Ref&, const Ref&) = default;

  private:
    AnimHandle handle_ = 0;
};

using Scalar = std::variant<float, int, Point3, Point4, Text, Ref<ReferenceTarget>, Matrix3>;
using Table = std::vector<Scalar>;
using ParamValue = std::variant<Scalar, Table>;

/// How a type is kept; tables by the type of their elements.
enum class Storage { Number, Integer, Three, Four, String, Reference, Matrix, Unsupported };

[[nodiscard]] Storage StorageOf(ParamType2 type);
[[nodiscard]] inline bool IsTable(ParamType2 type) {
    return (type & TYPE_TAB) != 0;
}
[[nodiscard]] inline ParamType2 ElementType(ParamType2 type) {
    return static_cast<ParamType2>(type & ~TYPE_TAB);
}
/// Zero, empty or null; a table of no elements.
[[nodiscard]] Scalar ZeroOf(ParamType2 type);
[[nodiscard]] ParamValue DefaultOf(ParamType2 type);

/// The type of a name as scene files write it ("float", "texmap_tab", ..).
[[nodiscard]] std::optional<ParamType2> TypeOfName(std::string_view name);
[[nodiscard]] std::string NameOfType(ParamType2 type);

} // namespace simhost
