#include "plugin/module.h"

#include "plugin/gdiplus_headers.h"

namespace {

HINSTANCE moduleInstance = nullptr;
ULONG_PTR gdiplusToken = 0;

} // namespace

namespace brimwave {

HINSTANCE ModuleInstance() noexcept {
    return moduleInstance;
}

void StartGdiplus() noexcept {
    if (gdiplusToken)
        return;
    Gdiplus::GdiplusStartupInput input; // version 1, background thread, no debug callback
    if (Gdiplus::GdiplusStartup(&gdiplusToken, &input, nullptr) != Gdiplus::Ok)
        gdiplusToken = 0;
}

void StopGdiplus() noexcept {
    if (gdiplusToken)
        Gdiplus::GdiplusShutdown(gdiplusToken);
    gdiplusToken = 0;
}

} // namespace brimwave

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID) {
    // The loader's lock is held here: nothing but noting the handle is safe.
    if (reason == DLL_PROCESS_ATTACH) {
        moduleInstance = instance;
        DisableThreadLibraryCalls(instance);
    }
    return TRUE;
}
