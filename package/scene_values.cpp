#include "package/scene_values.h"

#include "host/number_text.h"
#include "host/script.h"
#include "host/script_reply.h"

namespace brimwave {
namespace {

constexpr const wchar_t* colorPipelineScript =
    L"(local m = \"unknown\"; local rs = \"\"; local g = 2.2;"
    L"try ( m = (colorPipelineMgr.mode as string) ) catch();"
    L"try ( rs = (colorPipelineMgr.RenderingColorSpace as string) ) catch();"
    L"try ( g = (colorPipelineMgr.displayGamma as float) ) catch();"
    L"(m + \"|\" + rs + \"|\" + (g as string)))";

constexpr const wchar_t* renderDisplacementScript =
    L"(local a = \"\"; local r = \"\";"
    L"try ( a = (renderers.current.displacement_amount as string) ) catch();"
    L"try ( r = (renderers.current.displacement_relative as string) ) catch();"
    L"(a + \"|\" + r))";

} // namespace

ColorPipeline ReadColorPipeline() {
    ColorPipeline pipeline;
    const auto reply = RunScriptString(colorPipelineScript);
    if (!reply)
        return pipeline;
    std::wstring_view rest = *reply;
    if (const auto mode = TakeField(rest); !mode.empty())
        pipeline.mode = mode;
    pipeline.renderingSpace = TakeField(rest);
    ParseFloat(rest, pipeline.displayGamma); // what is missing keeps its default
    return pipeline;
}

std::optional<RenderDisplacement> ReadRenderDisplacement() {
    const auto reply = RunScriptString(renderDisplacementScript);
    if (!reply)
        return std::nullopt;
    std::wstring_view rest = *reply;
    const std::wstring_view amount = TakeField(rest);
    if (amount.empty())
        return std::nullopt;
    RenderDisplacement displacement;
    ParseFloat(amount, displacement.amount);
    displacement.relative = rest == L"true" || rest == L"True";
    return displacement;
}

} // namespace brimwave
