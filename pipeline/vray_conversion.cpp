#include "pipeline/vray_conversion.h"

#include "host/attempt.h"
#include "host/script.h"
#include "pipeline/script_reply.h"
#include "pipeline/script_text.h"

#include "scripts_embedded.h"

#include <max.h>

#include <array>

namespace brimwave {
namespace {

constexpr wchar_t noReply[] = L"ExecuteMAXScriptScript вернул пусто/не-строку (см. Listener на "
                              L"предмет синтаксической ошибки в скрипте)";
constexpr wchar_t oddReply[] = L"Неожиданный ответ скрипта: ";

bool IsAskedFor() {
    std::array<wchar_t, 8> value{};
    const DWORD length = GetEnvironmentVariableW(L"BRIMWAVE_VRAY_CONVERT", value.data(),
                                                 static_cast<DWORD>(value.size()));
    return length >= 1 && length < value.size() && value[0] == L'1';
}

} // namespace

VRayConversionResult ReadVRayReply(const std::optional<std::wstring>& reply) {
    if (!reply || reply->empty())
        return {.error = noReply};
    if (*reply == L"NONE")
        return {};
    VRayConversionResult result{.attempted = true, .error = {}};
    if (const auto count = AfterWord(*reply, L"CONVERTED:")) {
        result.ok = true;
        result.converted = LeadingInteger(*count).value_or(-1);
    } else if (const auto error = AfterWord(*reply, L"ERROR:")) {
        result.error = *error;
    } else {
        result.error = oddReply + *reply;
    }
    return result;
}

VRayConversionResult ConvertVRayMaterials() {
    if (!IsAskedFor())
        return {};
    std::optional<std::wstring> reply;
    Attempt([&] { reply = RunScriptString(ScriptText(scripts_embedded::vray_conversion_ms)); });
    return ReadVRayReply(reply);
}

} // namespace brimwave
