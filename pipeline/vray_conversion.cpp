#include "pipeline/vray_conversion.h"

#include "host/attempt.h"
#include "host/environment_variable.h"
#include "host/script.h"
#include "host/script_reply.h"

#include "scripts_embedded.h"

namespace brimwave {
namespace {

constexpr wchar_t noReply[] = L"ExecuteMAXScriptScript вернул пусто/не-строку (см. Listener на "
                              L"предмет синтаксической ошибки в скрипте)";
constexpr wchar_t oddReply[] = L"Неожиданный ответ скрипта: ";

bool IsAskedFor() {
    const std::wstring value = ReadEnvironmentVariable(L"BRIMWAVE_VRAY_CONVERT");
    return value.size() < 8 && value.starts_with(L'1');
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
    Attempt([&] { reply = RunScriptString(FillScript(scripts_embedded::vray_conversion_ms)); });
    return ReadVRayReply(reply);
}

} // namespace brimwave
