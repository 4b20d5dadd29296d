#pragma once
// How a random choice is written as a vertex colour; docs/vertex-colours.md tells readers.
#include "pipeline/multi_texture.h"

#include <max.h>

#include <functional>
#include <optional>

namespace brimwave {

/// One face's choice, as three numbers of 8 bits.
struct ChoiceColor {
    std::uint8_t choice = 0;    ///< 0..count-1
    std::uint8_t count = 0;     ///< 0: the face shows no map that chooses
    std::uint8_t variation = 0; ///< second random number; 0 where nothing varies
    friend bool operator==(const ChoiceColor&, const ChoiceColor&) = default;
};

/// The colour: red, green and blue are the three numbers divided by 255, so that they survive
/// being kept in 8 bits.
[[nodiscard]] VertColor ColorOf(const ChoiceColor& choice);

/// What a face is, as far as a choice can depend on it.
struct FaceItem {
    std::uint32_t object = 0; ///< handle of the node
    std::uint32_t materialId = 0;
    std::uint32_t element = 0;
    std::uint32_t face = 0;
    friend bool operator==(const FaceItem&, const FaceItem&) = default;
};

/// The rule that a face's map chooses by; `varies` when hue, saturation or gamma vary too.
struct FaceChoice {
    ChoiceRule rule;
    bool varies = false;
    std::wstring mapName;
};

/// Depends on nothing but the rule, `varies` and those numbers of the item that the rule's scope
/// names.
[[nodiscard]] ChoiceColor Choose(const FaceChoice& choice, const FaceItem& item);

/// The choices of all faces of a mesh: the distinct colours, and each face's place among them.
struct PaintedFaces {
    std::vector<ChoiceColor> colors;
    std::vector<std::uint32_t> ofFace;
    std::uint32_t elements = 0; ///< 0 when no rule asked for them
};

/// What a face of that material id shows; null: no map that chooses.
using ChoiceOfId = std::function<const FaceChoice*(MtlID)>;

/// Costs time in proportion to faces and vertices.
[[nodiscard]] PaintedFaces PaintFaces(const Mesh& mesh, std::uint32_t object,
                                      const ChoiceOfId& choiceOfId);

/// Whether the mesh has vertex colours, and whether they are these already.
[[nodiscard]] bool HasColors(const Mesh& mesh);
[[nodiscard]] bool CarriesColors(const Mesh& mesh, const PaintedFaces& painted);

/// Makes these the mesh's vertex colours. The three corners of a face share one colour that no
/// neighbour of another choice has a part in. Everything else of the mesh stays as it is. False
/// when the host refuses; the mesh is then without colours.
[[nodiscard]] bool WriteColors(Mesh& mesh, const PaintedFaces& painted);

} // namespace brimwave
