#pragma once
// Host parameters by internal name, whatever the class's block layout.
#include "host/json_text.h"
#include "host/param_index.h"
#include "host/param_value.h"

#include <optional>
#include <span>

namespace brimwave {

enum class RowUnit : std::uint8_t {
    AsStored,
    Length, // a length, written only as a float and scaled by the table's length scale
};

/// One row of a parameter table: which host parameter is written under which JSON key.
struct ParamRow {
    std::wstring_view param;
    std::wstring_view key;
    RowUnit unit = RowUnit::AsStored;
};

/// A texture-map parameter (or one element of a table of them) that holds a map.
struct TexmapParam {
    std::wstring_view name;
    int index = -1; // element of a table; -1 for a scalar parameter
    Texmap* map = nullptr;
};

/// Reads the parameters of host objects at one time. All blocks are searched in order, letter
/// case does not count, and a null object or an unknown name gives the absent result.
///
/// Keeps an index of every block descriptor that it met, so one reader should serve a whole
/// export; it must not outlive it. What the host throws passes through.
class ParamReader {
  public:
    /// Reads at the host's current time.
    ParamReader();

    [[nodiscard]] TimeValue Time() const { return time_; }

    /// The first scalar parameter of that name whose type has a kind.
    [[nodiscard]] ParamValue FindParamValue(Animatable* object, std::wstring_view name);
    /// The reference held by the first TYPE_MTL, TYPE_TEXMAP or TYPE_REFTARG parameter of that
    /// name; null when there is none or it is unset.
    [[nodiscard]] ReferenceTarget* FindParamRef(Animatable* object, std::wstring_view name);

    /// Elements of the first parameter of that name; -1 when it is no table of values.
    [[nodiscard]] int GetTabParamCount(Animatable* object, std::wstring_view name);
    /// One element of the first parameter of that name; absent when it is no table of values or
    /// the index is outside of it.
    [[nodiscard]] ParamValue GetTabParamValue(Animatable* object, std::wstring_view name,
                                              int index);

    /// Whether an entry of a list counts, by the table of its switches: one whose switch is
    /// missing or no flag does.
    [[nodiscard]] bool IsEntryOn(Animatable* object, std::wstring_view switches, int index);

    /// Elements of the first parameter of that name, whatever type of table it is; -1 when there
    /// is no such parameter or it is no table.
    [[nodiscard]] int CountElements(Animatable* object, std::wstring_view name);
    /// One element, as a number, of the first parameter of that name when that is a table of
    /// numbers of any type (percentages, angles and flags too). Nothing otherwise.
    [[nodiscard]] std::optional<float> FindTabNumber(Animatable* object, std::wstring_view name,
                                                     int index);

    /// Internal name of the first TYPE_TEXMAP parameter that holds the map; "" when none does.
    [[nodiscard]] std::wstring FindTexmapParamName(Animatable* object, Texmap* map);
    /// The same for tables; `index` receives the element, -1 when there is none.
    [[nodiscard]] std::wstring FindTexmapTabParamName(Animatable* object, Texmap* map,
                                                      int* index = nullptr);
    /// Every parameter and table element that holds a map, in block and definition order.
    [[nodiscard]] std::vector<TexmapParam> ListTexmapParams(Animatable* object);

    /// Appends the names of all TYPE_BOOL (TYPE_BOOL_TAB) parameters, in the same order.
    void ListBoolParamNames(Animatable* object, std::vector<std::wstring>& names);
    void ListBoolTabParamNames(Animatable* object, std::vector<std::wstring>& names);

    /// Appends `"key":value` when the object has the parameter, else nothing. The key is written
    /// as given.
    void AppendParamJson(JsonMembers& members, Animatable* object, std::wstring_view name,
                         std::wstring_view key);
    /// The same for each row in order. Which rows an object's class has is worked out once for
    /// each layout of blocks. The rows must outlive the reader.
    void AppendTable(JsonMembers& members, Animatable* object, std::span<const ParamRow> rows,
                     float lengthScale = 1.0f);

  private:
    struct Found {
        IParamBlock2* block;
        const ParamDefinition* definition;
    };
    struct PlanStep {
        std::uint16_t row;
        std::uint16_t block; // position among the blocks that have a descriptor
        ParamID id;
        ParamType2 type;
    };
    struct Plan {
        const ParamRow* rows;
        std::vector<const ParamBlockDesc2*> layout;
        std::vector<PlanStep> steps;
    };
    /// Calls `visit(Found)` for each definition of that name until it answers true.
    template <class Visit>
    bool VisitNamed(Animatable* object, std::wstring_view name, Visit visit);
    template <class Visit>
    void VisitAll(Animatable* object, Visit visit);
    void ListNamesOfType(Animatable* object, ParamType2 type, std::vector<std::wstring>& names);
    bool CollectBlocks(Animatable* object);
    const Plan& PlanFor(std::span<const ParamRow> rows);
    std::optional<PlanStep> PlanRow(std::wstring_view foldedName);

    TimeValue time_;
    ParamIndex index_;
    std::unordered_map<size_t, std::vector<Plan>> plans_;
    // The name looked up and the blocks of the object at hand, kept for their memory.
    std::wstring folded_;
    std::vector<IParamBlock2*> blocks_;
    std::vector<const ParamBlockDesc2*> layout_;
};

/// Appends `"key":value`; nothing for an absent value.
void AppendParamValue(JsonMembers& members, std::wstring_view key, const ParamValue& value);

} // namespace brimwave
