#pragma once
// Which map that chooses at random a face shows.
#include "pipeline/choice_colors.h"

#include <unordered_map>
#include <unordered_set>

namespace brimwave {

class ParamReader;

/// Searches materials for MultiTexture and CoronaMultiMap maps: sub-materials, maps inside maps,
/// shared ones and cycles. A material's maps come before its sub-materials; maps in slots that
/// are switched off do not count; of a multi-material, a face shows the sub-material of its id.
///
/// A face has room for one choice. The first map found has it, and every other map that chooses
/// by the same rule is served with it; for the rest a note is kept.
class ChoiceMaps {
  public:
    explicit ChoiceMaps(ParamReader& params) : params_(params) {}

    /// Whether the material holds such a map for any material id.
    [[nodiscard]] bool Any(Mtl& material);
    /// What a face of that id shows; null when no such map. Stays as long as this object.
    [[nodiscard]] const FaceChoice* For(Mtl& material, MtlID id);
    /// Whether a map of the material shows the mesh's own vertex colours.
    [[nodiscard]] bool ShowsVertexColors(Mtl& material);

    /// What was not served, one line each; then there are none. No line comes twice.
    [[nodiscard]] std::vector<std::wstring> TakeNotes();

  private:
    struct SearchResult {
        std::vector<Texmap*> maps;
        bool showsVertexColors = false;
        bool byId = false; ///< another material id may find other maps
    };
    struct Summary {
        bool any = false;
        bool showsVertexColors = false;
    };

    /// What the material shows; `id`: the material id that multi-materials are entered by; empty:
    /// all sub-materials.
    [[nodiscard]] SearchResult Search(Mtl& root, std::optional<MtlID> id);
    [[nodiscard]] const Summary& SummaryOf(Mtl& material);
    [[nodiscard]] std::optional<FaceChoice> Serve(const std::vector<Texmap*>& maps);
    /// Null when the host fails over it.
    [[nodiscard]] const ChoiceMap* Read(Texmap& map);
    void Note(std::wstring line);

    ParamReader& params_;
    std::unordered_map<const Mtl*, Summary> summaries_;
    using ChoiceOfIds = std::unordered_map<int, std::optional<FaceChoice>>; ///< -1: of every id
    std::unordered_map<const Mtl*, ChoiceOfIds> materials_;
    std::unordered_map<const Texmap*, std::optional<ChoiceMap>> read_;
    std::unordered_set<std::wstring> noted_;
    std::vector<std::wstring> notes_;
};

} // namespace brimwave
