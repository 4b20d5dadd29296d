#include "simhost/script/source.h"

#include <algorithm>
#include <fstream>

#include "simhost/script/limits.h"
#include "text/cp1252.h"
#include "text/utf8.h"

namespace simhost::script {
namespace {

std::wstring DecodeUtf16(std::string_view bytes, bool bigEndian) {
    std::wstring text;
    text.reserve(bytes.size() / 2);
    for (size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        text.push_back(static_cast<wchar_t>(bigEndian ? first << 8 | second : second << 8 | first));
    }
    return text;
}

} // namespace

std::wstring DecodeSource(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE"))
        return DecodeUtf16(bytes.substr(2), false);
    if (bytes.starts_with("\xFE\xFF"))
        return DecodeUtf16(bytes.substr(2), true);
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    return utf8::IsValid(bytes) ? utf8::ToWide(bytes) : cp1252::ToWide(bytes);
}

std::optional<std::string> FindSource(std::wstring_view path) {
    std::error_code error;
    const std::filesystem::path file = ToFilePath(path);
    if (!std::filesystem::is_regular_file(file, error) ||
        std::filesystem::file_size(file, error) > longestScript * 4 || error) {
        return std::nullopt;
    }
    std::ifstream in(file, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(in), {});
    return in.bad() ? std::nullopt : std::optional(std::move(bytes));
}

#ifdef _WIN32
std::filesystem::path ToFilePath(std::wstring_view path) {
    return {std::wstring(path)};
}
#else
std::filesystem::path ToFilePath(std::wstring_view path) {
    std::string bytes = utf8::FromWide(path);
    std::replace(bytes.begin(), bytes.end(), '\\', '/');
    return {bytes.substr(0, bytes.find('\0'))};
}
#endif

} // namespace simhost::script
