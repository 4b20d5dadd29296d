#pragma once
// Parameter blocks: a descriptor with named, typed definitions, and the block with the values.
#include "AssetUser.h"
#include "color.h"
#include "matrix3.h"
#include "paramtype.h"
#include "ref.h"

class INode;
class Mtl;
class Texmap;

/// One definition. `int_name` is the internal name; in third-party classes it can be null or
/// empty, and two blocks may use the same one.
class ParamDef {
  public:
    ParamID ID = 0;
    const MCHAR* int_name = nullptr;
    ParamType2 type = TYPE_FLOAT;
};

class ParamBlockDesc2 {
  public:
    virtual ~ParamBlockDesc2() = default;
    BlockID ID = 0;
    const MCHAR* int_name = nullptr;
    USHORT count = 0;
    ParamDef* paramdefs = nullptr;

    [[nodiscard]] ParamID IndextoID(int i) const { return paramdefs[i].ID; }
    /// -1 when there is no such definition.
    [[nodiscard]] int IDtoIndex(ParamID id) const;
    [[nodiscard]] ParamDef& GetParamDef(ParamID id) const { return paramdefs[IDtoIndex(id)]; }
    /// Index of the definition of exactly that name, -1 when absent.
    [[nodiscard]] int NameToIndex(const MCHAR* name) const;
};

/// Values of one block. GetValue answers FALSE, and leaves the value, when the parameter does
/// not exist, has another type, or the table index is outside of it.
class IParamBlock2 : public ReferenceTarget {
  public:
    virtual ParamID IndextoID(int i) = 0;
    virtual ParamBlockDesc2* GetDesc() = 0;
    virtual ParamDef& GetParamDef(ParamID id) = 0;
    /// Elements of a table parameter; 1 for a scalar; 0 when absent.
    virtual int Count(ParamID id) = 0;

    virtual BOOL GetValue(ParamID id, TimeValue t, float& v, Interval& valid, int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, int& v, Interval& valid, int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, Point3& v, Interval& valid,
                          int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, Point4& v, Interval& valid,
                          int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, Color& v, Interval& valid, int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, AColor& v, Interval& valid,
                          int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, const MCHAR*& v, Interval& valid,
                          int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, Mtl*& v, Interval& valid, int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, Texmap*& v, Interval& valid,
                          int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, INode*& v, Interval& valid,
                          int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, ReferenceTarget*& v, Interval& valid,
                          int tabIndex = 0) = 0;
    virtual BOOL GetValue(ParamID id, TimeValue t, Matrix3& v, Interval& valid,
                          int tabIndex = 0) = 0;

    virtual BOOL SetValue(ParamID id, TimeValue t, float v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, int v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, const Point3& v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, const Color& v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, const Point4& v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, const MCHAR* v, int tabIndex = 0) = 0;
    virtual BOOL SetValue(ParamID id, TimeValue t, ReferenceTarget* v, int tabIndex = 0) = 0;

    /// The file of a TYPE_FILENAME parameter.
    virtual MaxSDK::AssetManagement::AssetUser GetAssetUser(ParamID id, int tabIndex = 0) = 0;
};
