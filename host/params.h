#pragma once
// Host parameters by internal name, whatever the class's block layout.
#include "host/json_text.h"
#include "host/param_layout.h"
#include "host/param_value.h"

#include <array>
#include <optional>
#include <span>

namespace brimwave {

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
    [[nodiscard]] std::vector<TexmapParam> CollectTexmapParams(Animatable* object);

    /// Appends the names of all TYPE_BOOL (TYPE_BOOL_TAB) parameters, in the same order.
    void ListBoolParamNames(Animatable* object, std::vector<std::wstring>& names);
    void ListBoolTabParamNames(Animatable* object, std::vector<std::wstring>& names);

    /// Appends `"key":value` when the object has the parameter, else nothing. The key is written
    /// as given.
    void AppendParamJson(JsonMembers& members, Animatable* object, std::wstring_view name,
                         std::wstring_view key);

    // Several parameters at once. The rows must outlive the reader.

    /// What FindParamValue gives for each row, in their order.
    template <size_t count>
    [[nodiscard]] std::array<ParamValue, count> FindParamValues(Animatable* object,
                                                                const ParamRow (&rows)[count]) {
        std::array<ParamValue, count> values;
        FindValues(object, rows, values);
        return values;
    }
    /// AppendParamJson for each row in order.
    void AppendTable(JsonMembers& members, Animatable* object, std::span<const ParamRow> rows,
                     float lengthScale = 1.0f);

  private:
    /// The object's layout; `blocks_` receives its blocks.
    ParamLayout& Open(Animatable* object);
    /// Calls `visit(block, definition)` for each definition of that name until it answers true.
    template <class Visit>
    void VisitNamed(Animatable* object, std::wstring_view name, Visit visit);
    void FindValues(Animatable* object, std::span<const ParamRow> rows,
                    std::span<ParamValue> values);
    /// The value of the first that has one, of the object at hand.
    ParamValue ReadFirst(std::span<const BlockParam> params);
    void Read(ParamLayout& layout, const ParamLayout::TableParam& row, ParamValue& value);
    void ListNamesOfType(Animatable* object, ParamType2 type, std::vector<std::wstring>& names);

    struct LayoutHash {
        size_t operator()(const std::vector<const ParamBlockDesc2*>& descriptors) const;
    };
    TimeValue time_;
    ParamIndex index_;
    using Layouts =
        std::unordered_map<std::vector<const ParamBlockDesc2*>, ParamLayout, LayoutHash>;
    Layouts layouts_;
    // The object at hand: its layout, and its blocks that have a descriptor.
    Layouts::value_type* opened_ = nullptr;
    std::vector<IParamBlock2*> blocks_;
    std::vector<const ParamBlockDesc2*> descriptors_;
};

/// Appends `"key":value`; nothing for an absent value.
void AppendParamValue(JsonMembers& members, std::wstring_view key, const ParamValue& value);

} // namespace brimwave
