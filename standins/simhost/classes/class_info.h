#pragma once
// What the host knows of a class: its names, its parameter blocks, its texture slots and how its
// sub-materials and sub-objects are kept. Shared by all things of the class.
#include "iparamb2.h"
#include "simhost/classes/param_value.h"

#include <memory>
#include <vector>

namespace simhost {

/// One definition on the way into a descriptor.
struct ParamSpec {
    Text name; // null: the internal name is a null pointer
    ParamID id = 0;
    ParamType2 type = TYPE_FLOAT;
    ParamValue value;
};

/// A descriptor that owns its definitions. One for all blocks of the same shape.
class BlockDesc : public ParamBlockDesc2 {
  public:
    BlockDesc(Text name, BlockID id, std::vector<ParamSpec> params);
    [[nodiscard]] const std::vector<ParamSpec>& Params() const { return params_; }
    [[nodiscard]] const Text& Name() const { return name_; }
    /// -1 when there is none. Exact spelling first, then any letter case.
    [[nodiscard]] int Find(std::wstring_view name) const;

  private:
    Text name_;
    std::vector<ParamSpec> params_;
    std::vector<ParamDef> defs_;
};

/// A block of a class. Null descriptor: the thing holds a null block there.
struct BlockSlot {
    std::shared_ptr<const BlockDesc> desc;
    bool hidden = false; // values that the host keeps otherwise; plug-ins do not see the block
    bool hasDescriptor = true; // false: GetDesc answers null
};

/// Where a parameter stands: block, definition, and the element for one entry of a table.
struct ParamPlace {
    int block = -1;
    int index = -1;
    int element = -1;
    [[nodiscard]] bool Known() const { return block >= 0; }
};

/// A texture slot. With a place the map lives in that parameter, else in the slot itself.
struct SlotSpec {
    Text name;
    ParamPlace map;
    ParamPlace on;
    bool wholeTable = false; // one slot for each entry of the table at `map` (switches at `on`)
    std::vector<std::wstring> entryNames; // of a whole table; further ones are "<name> <number>"
};

struct SubMtlSpec {
    std::wstring name;
    ParamPlace mtl;
    bool wholeTable = false;
};

struct SubObjectSpec {
    std::wstring role;
    std::wstring className;
};

class ClassInfo {
  public:
    std::wstring name;          // display name, the same in every language
    std::wstring localizedName; // display name in the host's language
    std::wstring scriptName;    // what scripts call the class
    SClass_ID superClass = REF_TARGET_CLASS_ID;
    SClass_ID kind = REF_TARGET_CLASS_ID; // the true super class when superClass is forged
    Class_ID classId;
    std::vector<BlockSlot> blocks;
    std::vector<SlotSpec> slots;
    std::vector<SubMtlSpec> subMtls;
    std::vector<SubObjectSpec> subObjects;
    std::wstring behaviour; // which C++ class stands behind it, when the kind does not tell
    bool converts = true;   // objects: becomes a mesh on request

    /// "Block|name" or a bare name; exact spelling first, then any letter case.
    [[nodiscard]] ParamPlace Find(std::wstring_view name) const;
};

using ClassPtr = std::shared_ptr<const ClassInfo>;

/// A class id for a class of which only the name is known; the same each time.
[[nodiscard]] Class_ID ClassIdOfName(std::wstring_view name);

} // namespace simhost
