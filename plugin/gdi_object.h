#pragma once
#include <windows.h>

#include <memory>
#include <type_traits>

namespace brimwave {

struct GdiObjectDeleter {
    void operator()(void* object) const noexcept { DeleteObject(object); }
};
/// Owns an HBITMAP, HFONT, ...: `GdiObject<HFONT>`.
template <typename Handle>
using GdiObject = std::unique_ptr<std::remove_pointer_t<Handle>, GdiObjectDeleter>;

} // namespace brimwave
