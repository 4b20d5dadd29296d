#include "package/scene_values.h"

#include "host/number_text.h"
#include "host/script.h"
#include "host/script_reply.h"

#include "package_scripts_embedded.h"

namespace brimwave {
ColorPipeline ReadColorPipeline() {
    ColorPipeline pipeline;
    const auto reply = RunScriptString(FillScript(package_scripts_embedded::color_pipeline_ms));
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
    const auto reply =
        RunScriptString(FillScript(package_scripts_embedded::render_displacement_ms));
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
