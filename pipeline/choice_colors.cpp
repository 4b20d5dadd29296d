#include "pipeline/choice_colors.h"

#include "pipeline/mesh_elements.h"

#include <unordered_map>

namespace brimwave {
namespace {

std::uint32_t Packed(const ChoiceColor& color) {
    return std::uint32_t{color.choice} << 16 | std::uint32_t{color.count} << 8 | color.variation;
}

/// Gives every distinct colour a number, in order of first use.
class Palette {
  public:
    explicit Palette(std::vector<ChoiceColor>& colors) : colors_(colors) {}

    std::uint32_t NumberOf(const ChoiceColor& color) {
        const auto [at, fresh] =
            numbers_.emplace(Packed(color), static_cast<std::uint32_t>(colors_.size()));
        if (fresh)
            colors_.push_back(color);
        return at->second;
    }

  private:
    std::vector<ChoiceColor>& colors_;
    std::unordered_map<std::uint32_t, std::uint32_t> numbers_;
};

/// The choices of the material ids of a mesh: neighbouring faces mostly have the same one.
class IdChoices {
  public:
    explicit IdChoices(const ChoiceOfId& choiceOfId) : choiceOfId_(choiceOfId) {}

    const FaceChoice* Of(MtlID id) {
        if (!known_ || id != last_) {
            const auto [at, fresh] = ofId_.try_emplace(id, nullptr);
            if (fresh)
                at->second = choiceOfId_(id);
            choice_ = at->second;
            last_ = id;
            known_ = true;
        }
        return choice_;
    }

  private:
    const ChoiceOfId& choiceOfId_;
    std::unordered_map<MtlID, const FaceChoice*> ofId_;
    const FaceChoice* choice_ = nullptr;
    MtlID last_ = 0;
    bool known_ = false;
};

bool AnyByElement(const Mesh& mesh, IdChoices& choices) {
    for (int f = 0; f < mesh.getNumFaces(); ++f)
        if (const FaceChoice* choice = choices.Of(mesh.faces[f].getMatID()))
            if (choice->rule.scope.element)
                return true;
    return false;
}

/// The item with zeros for what the scope does not ask for: equal ones get equal colours.
FaceItem Relevant(const FaceItem& item, const ChoiceScope& scope) {
    return {scope.object ? item.object : 0, scope.materialId ? item.materialId : 0,
            scope.element ? item.element : 0, scope.face ? item.face : 0};
}

} // namespace

VertColor ColorOf(const ChoiceColor& choice) {
    return {static_cast<float>(choice.choice) / 255.0f, static_cast<float>(choice.count) / 255.0f,
            static_cast<float>(choice.variation) / 255.0f};
}

ChoiceColor Choose(const FaceChoice& choice, const FaceItem& item) {
    const ChoiceScope& scope = choice.rule.scope;
    RandomKey key(choice.rule.seed);
    if (scope.object)
        key = key.With(RandomItem::Object, item.object);
    if (scope.materialId)
        key = key.With(RandomItem::MaterialId, item.materialId);
    if (scope.element)
        key = key.With(RandomItem::Element, item.element);
    if (scope.face)
        key = key.With(RandomItem::Face, item.face);
    ChoiceColor color;
    color.count = static_cast<std::uint8_t>(choice.rule.choice.Count());
    color.choice = static_cast<std::uint8_t>(choice.rule.choice.Pick(key.Bits(RandomUse::Choice)));
    if (choice.varies)
        color.variation = static_cast<std::uint8_t>(key.Bits(RandomUse::Variation) >> 56);
    return color;
}

PaintedFaces PaintFaces(const Mesh& mesh, std::uint32_t object, const ChoiceOfId& choiceOfId) {
    PaintedFaces painted;
    IdChoices choices(choiceOfId);
    MeshElements elements;
    if (AnyByElement(mesh, choices))
        elements = CollectMeshElements(mesh);
    painted.elements = elements.count;

    Palette palette(painted.colors);
    const FaceChoice* lastChoice = nullptr;
    FaceItem lastItem;
    std::uint32_t lastNumber = 0;
    painted.ofFace.reserve(static_cast<size_t>(mesh.getNumFaces()));
    for (int f = 0; f < mesh.getNumFaces(); ++f) {
        const auto face = static_cast<std::uint32_t>(f);
        const MtlID id = mesh.faces[f].getMatID();
        const FaceChoice* const choice = choices.Of(id);
        FaceItem item;
        if (choice)
            item = Relevant({object, id, elements.ofFace.empty() ? 0 : elements.ofFace[face], face},
                            choice->rule.scope);
        if (f == 0 || choice != lastChoice || item != lastItem)
            lastNumber = palette.NumberOf(choice ? Choose(*choice, item) : ChoiceColor{});
        lastChoice = choice;
        lastItem = item;
        painted.ofFace.push_back(lastNumber);
    }
    return painted;
}

bool HasColors(const Mesh& mesh) {
    return mesh.getNumVertCol() > 0 && mesh.vertCol && mesh.vcFace;
}

bool CarriesColors(const Mesh& mesh, const PaintedFaces& painted) {
    if (!HasColors(mesh) || painted.ofFace.size() != static_cast<size_t>(mesh.getNumFaces()))
        return false;
    const auto count = static_cast<DWORD>(mesh.getNumVertCol());
    for (size_t f = 0; f < painted.ofFace.size(); ++f) {
        const VertColor wanted = ColorOf(painted.colors[painted.ofFace[f]]);
        for (const DWORD corner : mesh.vcFace[f].t)
            if (corner >= count || !(mesh.vertCol[corner] == wanted))
                return false;
    }
    return true;
}

bool WriteColors(Mesh& mesh, const PaintedFaces& painted) {
    const auto faces = static_cast<int>(painted.ofFace.size());
    if (!mesh.setNumVertCol(static_cast<int>(painted.colors.size())) ||
        !mesh.setNumVCFaces(faces) || !HasColors(mesh)) {
        mesh.setNumVertCol(0);
        return false;
    }
    for (size_t i = 0; i < painted.colors.size(); ++i)
        mesh.vertCol[i] = ColorOf(painted.colors[i]);
    for (size_t f = 0; f < painted.ofFace.size(); ++f) {
        const DWORD color = painted.ofFace[f];
        mesh.vcFace[f].setTVerts(color, color, color);
    }
    return true;
}

} // namespace brimwave
