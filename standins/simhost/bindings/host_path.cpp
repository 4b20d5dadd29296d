#include "simhost/bindings/host_path.h"

#include "simhost/script/text.h"

namespace simhost::script {

#ifdef _WIN32

std::filesystem::path ToHostPath(std::wstring_view path) {
    return {std::wstring(path)};
}
std::wstring FromHostPath(const std::filesystem::path& path) {
    return path.wstring();
}

#else

std::filesystem::path ToHostPath(std::wstring_view path) {
    std::string bytes = ToUtf8(path);
    for (char& c : bytes)
        c = c == '\\' ? '/' : c;
    return {bytes.substr(0, bytes.find('\0'))};
}

std::wstring FromHostPath(const std::filesystem::path& path) {
    return FromUtf8(path.native());
}

#endif

} // namespace simhost::script
