#pragma once
#include <windows.h>

#include <memory>

namespace brimwave {

struct KernelHandleCloser {
    void operator()(HANDLE handle) const noexcept { CloseHandle(handle); }
};
/// Owns a file, a thread, an event; null: none.
using KernelHandle = std::unique_ptr<void, KernelHandleCloser>;

} // namespace brimwave
