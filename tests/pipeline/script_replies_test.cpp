#include "pipeline/vray_conversion.h"

#include <gtest/gtest.h>

namespace brimwave {
namespace {

TEST(ScriptReply, VRayRepliesMean) {
    const struct {
        std::optional<std::wstring> reply;
        VRayConversionResult result;
    } rows[] = {
        {std::nullopt,
         {false, false, 0,
          L"ExecuteMAXScriptScript вернул пусто/не-строку (см. Listener на предмет "
          L"синтаксической ошибки в скрипте)"}},
        {L"NONE", {false, false, 0, L""}},
        {L"CONVERTED:41", {true, true, 41, L""}},
        {L"CONVERTED:", {true, true, -1, L""}},
        {L"CONVERTED:many", {true, true, -1, L""}},
        {L"ERROR:no converter", {true, false, 0, L"no converter"}},
        {L"ERROR:", {true, false, 0, L""}},
        {L"NONE ", {true, false, 0, L"Неожиданный ответ скрипта: NONE "}},
        {L"converted:1", {true, false, 0, L"Неожиданный ответ скрипта: converted:1"}},
    };
    for (const auto& row : rows) {
        const VRayConversionResult got = ReadVRayReply(row.reply);
        EXPECT_EQ(got.attempted, row.result.attempted);
        EXPECT_EQ(got.ok, row.result.ok);
        EXPECT_EQ(got.converted, row.result.converted);
        EXPECT_EQ(got.error, row.result.error);
    }
    EXPECT_EQ(ReadVRayReply(L"").error, ReadVRayReply(std::nullopt).error);
}

} // namespace
} // namespace brimwave
