#pragma once
// The few Win32 types and calls that the core uses, for the native check build. Declares just
// what is used; a new call is added here together with its implementation beside this file.
//
// Paths may carry "\" or "/"; the calls take both. As on Windows, every wchar_t string holds
// UTF-16 units (one unit per wchar_t, although wchar_t is wider here).
#include <cstddef>
#include <cstdint>
#include <cwchar>

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using USHORT = std::uint16_t;
using DWORD = std::uint32_t;
using ULONG = std::uint32_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using DWORD_PTR = std::uintptr_t;
using UINT_PTR = std::uintptr_t;
using INT_PTR = std::intptr_t;
using LONG_PTR = std::intptr_t;
using LPARAM = LONG_PTR;
using WPARAM = UINT_PTR;
using LPCWSTR = const wchar_t*;
using LPWSTR = wchar_t*;
using LPVOID = void*;
using HANDLE = void*;
using HWND = struct HWND__*;
using HINSTANCE = struct HINSTANCE__*;
using HMODULE = HINSTANCE;
using COLORREF = DWORD;

#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif

struct LARGE_INTEGER {
    LONGLONG QuadPart;
};

inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFFu;
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x1;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD GENERIC_READ = 0x80000000u;
inline constexpr DWORD GENERIC_WRITE = 0x40000000u;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD FILE_SHARE_DELETE = 4;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr UINT CP_ACP = 0;
inline constexpr UINT CP_UTF8 = 65001;
inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
inline constexpr DWORD ERROR_ACCESS_DENIED = 5;
inline constexpr DWORD ERROR_ALREADY_EXISTS = 183;
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(-1);

// clang-format off
DWORD GetLastError();
DWORD GetFileAttributesW(LPCWSTR path);
BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes);
BOOL CreateDirectoryW(LPCWSTR path, void* security);
BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists);
BOOL DeleteFileW(LPCWSTR path);
HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD share, void* security, DWORD disposition,
                   DWORD flags, HANDLE templateFile);
BOOL ReadFile(HANDLE file, void* buffer, DWORD size, DWORD* read, void* overlapped);
BOOL WriteFile(HANDLE file, const void* buffer, DWORD size, DWORD* written, void* overlapped);
BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size);
BOOL CloseHandle(HANDLE handle);
ULONGLONG GetTickCount64();
DWORD GetEnvironmentVariableW(LPCWSTR name, LPWSTR buffer, DWORD size);
int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int bytes, LPWSTR out, int size);
int WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR text, int units, char* out, int size,
                        const char* defaultChar, BOOL* usedDefault);
int _wcsicmp(const wchar_t* a, const wchar_t* b);
int _wtoi(const wchar_t* text);
// clang-format on
