// Owners of Win32 handles.
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

struct HandleCloser {
    void operator()(void* handle) const noexcept { CloseHandle(handle); }
};
/// Owns a kernel handle whose "none" is null (a thread, an event; not a file).
using KernelHandle = std::unique_ptr<void, HandleCloser>;

} // namespace brimwave
