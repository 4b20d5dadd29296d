// File calls of <windows.h> on this system. They set the last error as Windows does.
#include "path.h"

#include "text/utf8.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace simhost::win32 {

namespace {
thread_local DWORD lastError = ERROR_SUCCESS;

int Descriptor(HANDLE handle) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(handle)) - 1;
}

HANDLE HandleOf(int descriptor) { // never null, unlike descriptor 0
    return reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(descriptor) + 1);
}

BOOL Succeeded(bool ok) {
    if (!ok)
        SetErrorFromErrno();
    return ok ? TRUE : FALSE;
}
} // namespace

std::string NativePath(LPCWSTR path) {
    std::string native = utf8::FromWide(path ? path : L"");
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

void SetError(DWORD code) {
    lastError = code;
}

void SetErrorFromErrno() {
    switch (errno) {
    case ENOENT:
        SetError(ERROR_FILE_NOT_FOUND);
        break;
    case ENOTDIR:
        SetError(ERROR_PATH_NOT_FOUND);
        break;
    case EEXIST:
        SetError(ERROR_ALREADY_EXISTS);
        break;
    default:
        SetError(ERROR_ACCESS_DENIED);
        break;
    }
}

} // namespace simhost::win32

using namespace simhost::win32;

DWORD GetLastError() {
    return lastError;
}

DWORD GetFileAttributesW(LPCWSTR path) {
    struct stat info {};
    const std::string native = NativePath(path);
    if (stat(native.c_str(), &info) != 0) {
        SetErrorFromErrno();
        return INVALID_FILE_ATTRIBUTES;
    }
    DWORD attributes = S_ISDIR(info.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : 0;
    if (!(info.st_mode & S_IWUSR))
        attributes |= FILE_ATTRIBUTE_READONLY;
    return attributes ? attributes : FILE_ATTRIBUTE_NORMAL;
}

BOOL SetFileAttributesW(LPCWSTR path, DWORD attributes) {
    struct stat info {};
    const std::string native = NativePath(path);
    if (stat(native.c_str(), &info) != 0)
        return Succeeded(false);
    const mode_t mode = attributes & FILE_ATTRIBUTE_READONLY ? info.st_mode & ~mode_t{0222}
                                                             : info.st_mode | S_IWUSR;
    return Succeeded(chmod(native.c_str(), mode & 07777) == 0);
}

BOOL CreateDirectoryW(LPCWSTR path, void* /*security*/) {
    if (mkdir(NativePath(path).c_str(), 0777) == 0)
        return TRUE;
    SetErrorFromErrno();
    if (errno == ENOENT)
        SetError(ERROR_PATH_NOT_FOUND); // it is the folder around it that is missing
    return FALSE;
}

BOOL DeleteFileW(LPCWSTR path) {
    return Succeeded(unlink(NativePath(path).c_str()) == 0);
}

BOOL CopyFileW(LPCWSTR from, LPCWSTR to, BOOL failIfExists) {
    const HANDLE source = CreateFileW(from, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (source == INVALID_HANDLE_VALUE)
        return FALSE;
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | (failIfExists ? O_EXCL : O_TRUNC);
    const int target = open(NativePath(to).c_str(), flags, 0666);
    bool ok = target >= 0;
    char buffer[1 << 16];
    while (ok) {
        const ssize_t got = read(Descriptor(source), buffer, sizeof buffer);
        if (got <= 0) {
            ok = got == 0;
            break;
        }
        ok = write(target, buffer, static_cast<size_t>(got)) == got;
    }
    const BOOL result = Succeeded(ok);
    if (target >= 0)
        close(target);
    CloseHandle(source);
    return result;
}

HANDLE CreateFileW(LPCWSTR path, DWORD access, DWORD /*share*/, void* /*security*/,
                   DWORD disposition, DWORD /*flags*/, HANDLE /*templateFile*/) {
    const std::string native = NativePath(path);
    int flags = O_CLOEXEC;
    flags |= !(access & GENERIC_WRITE) ? O_RDONLY : (access & GENERIC_READ) ? O_RDWR : O_WRONLY;
    if (disposition == CREATE_ALWAYS)
        flags |= O_CREAT | O_TRUNC;
    struct stat info {};
    if (stat(native.c_str(), &info) == 0 && S_ISDIR(info.st_mode)) {
        SetError(ERROR_ACCESS_DENIED); // a folder is no file to read
        return INVALID_HANDLE_VALUE;
    }
    const int descriptor = open(native.c_str(), flags, 0666);
    if (descriptor < 0) {
        SetErrorFromErrno();
        return INVALID_HANDLE_VALUE;
    }
    return HandleOf(descriptor);
}

BOOL ReadFile(HANDLE file, void* buffer, DWORD size, DWORD* got, void* /*overlapped*/) {
    const ssize_t count = read(Descriptor(file), buffer, size);
    if (got)
        *got = count > 0 ? static_cast<DWORD>(count) : 0;
    return Succeeded(count >= 0);
}

BOOL WriteFile(HANDLE file, const void* buffer, DWORD size, DWORD* written, void* /*overlapped*/) {
    DWORD done = 0;
    while (done < size) {
        const ssize_t count =
            write(Descriptor(file), static_cast<const char*>(buffer) + done, size - done);
        if (count <= 0)
            break;
        done += static_cast<DWORD>(count);
    }
    if (written)
        *written = done;
    return Succeeded(done == size);
}

BOOL GetFileSizeEx(HANDLE file, LARGE_INTEGER* size) {
    struct stat info {};
    if (fstat(Descriptor(file), &info) != 0)
        return Succeeded(false);
    size->QuadPart = info.st_size;
    return TRUE;
}

BOOL CloseHandle(HANDLE handle) {
    return Succeeded(close(Descriptor(handle)) == 0);
}
