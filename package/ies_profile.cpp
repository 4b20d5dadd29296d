#include "package/ies_profile.h"

#include "host/files.h"
#include "host/json_text.h"

#include <algorithm>

namespace brimwave {
namespace {

/// Length of the next piece to convert. It ends behind a blank or a control character: no code
/// page has those inside of a character of several bytes.
size_t PieceLength(std::string_view bytes) {
    constexpr size_t aim = 64 * 1024;
    if (bytes.size() <= aim)
        return bytes.size();
    const auto ends = [](char c) { return static_cast<unsigned char>(c) <= 0x20; };
    const auto cut = std::find_if(bytes.begin() + aim, bytes.end(), ends);
    return cut == bytes.end() ? bytes.size() : static_cast<size_t>(cut - bytes.begin()) + 1;
}

} // namespace

IesProfile ReadIesProfile(PackageContext& package, Animatable& light, std::wstring_view parameter) {
    IesProfile profile;
    ParamValue path = package.params.FindParamValue(&light, parameter);
    profile.stored = std::move(path.stringValue);
    profile.resolved = package.assets.Resolve(profile.stored, AssetKind::Photometric);
    if (profile.resolved)
        profile.bytes = ReadWholeFile(*profile.resolved).value_or("");
    return profile;
}

size_t AppendIesText(Utf8Store& out, std::string_view bytes) {
    size_t characters = 0;
    while (!bytes.empty()) {
        const size_t length = PieceLength(bytes);
        const std::wstring text = DecodeText(bytes.substr(0, length), TextEncoding::System);
        bytes.remove_prefix(length);
        characters += text.size();
        out.Append(EscapeJsonString(text));
    }
    return characters;
}

} // namespace brimwave
