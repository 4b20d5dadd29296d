#include "tests/plugin/process_resources.h"

#include <windows.h>

#include <tlhelp32.h>

namespace brimwave::testing {
namespace {

long CountBlocks() {
    long count = 0;
    const HANDLE heap = GetProcessHeap();
    HeapLock(heap);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heap, &entry))
        if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
            ++count;
    HeapUnlock(heap);
    return count;
}

long CountDrawingObjects() {
    if (const DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS))
        return static_cast<long>(count);
    // Not every system counts them. There a handle's number alone names the object.
    long count = 0;
    for (UINT_PTR number = 1; number < 0x10000; ++number)
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(number)) != 0;
    return count;
}

BOOL CALLBACK CountChild(HWND, LPARAM count) {
    ++*reinterpret_cast<long*>(count);
    return TRUE;
}

BOOL CALLBACK CountWindow(HWND window, LPARAM count) {
    CountChild(window, count);
    EnumChildWindows(window, CountChild, count);
    return TRUE;
}

long CountThreads() {
    long count = 0;
    const HANDLE list = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 thread{};
    thread.dwSize = sizeof thread;
    for (BOOL more = Thread32First(list, &thread); more; more = Thread32Next(list, &thread))
        count += thread.th32OwnerProcessID == GetCurrentProcessId();
    CloseHandle(list);
    return count;
}

} // namespace

ProcessResources CountResources(unsigned long uiThread) {
    ProcessResources found;
    found.blocks = CountBlocks();
    found.drawing = CountDrawingObjects();
    EnumThreadWindows(uiThread, CountWindow, reinterpret_cast<LPARAM>(&found.windows));
    found.threads = CountThreads();
    return found;
}

} // namespace brimwave::testing
