#pragma once
#include "simhost/classes/class_info.h"
#include "simhost/scene/faults.h"

#include <map>

namespace simhost {

/// A block of values. Only what differs from the descriptor's defaults takes room. Reading with
/// another type than the parameter's answers FALSE, as the host does:
/// numbers (FLOAT ANGLE PCNT_FRAC WORLD COLOR_CHANNEL) as float; INT BOOL TIMEVALUE RADIOBTN_INDEX
/// INDEX as int; RGBA POINT3 HSV as Point3 or Color; FRGBA POINT4 as Point4 or AColor; texts as
/// const MCHAR*; MTL, TEXMAP, INODE, REFTARG each as its own pointer type.
class ParamBlock final : public IParamBlock2 {
  public:
    explicit ParamBlock(BlockSlot slot);

    // The host's own way in, by index of the definition.
    [[nodiscard]] const BlockDesc& Shape() const { return *slot_.desc; }
    [[nodiscard]] bool Hidden() const { return slot_.hidden; }
    [[nodiscard]] const ParamValue& Value(int index) const;
    /// The value must be of the parameter's type.
    void Put(int index, ParamValue value);
    void PutElement(int index, int element, Scalar value);
    [[nodiscard]] int CountAt(int index) const;
    /// The scalar, or the element of a table; null when it is not there.
    [[nodiscard]] const Scalar* At(int index, int element) const;
    void CopyValuesFrom(const ParamBlock& other);
    /// Grows with every change of a value.
    [[nodiscard]] unsigned long Version() const { return version_; }
    Faults faults;

    SClass_ID SuperClassID() override { return PARAMETER_BLOCK2_CLASS_ID; }
    Class_ID ClassID() override { return Class_ID(PARAMETER_BLOCK2_CLASS_ID, 0); }
    void GetClassName(MSTR& s, bool localized = true) const override;

    ParamID IndextoID(int i) override { return slot_.desc->IndextoID(i); }
    ParamBlockDesc2* GetDesc() override;
    ParamDef& GetParamDef(ParamID id) override;
    int Count(ParamID id) override;

    BOOL GetValue(ParamID id, TimeValue t, float& v, Interval& valid, int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, int& v, Interval& valid, int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, Point3& v, Interval& valid, int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, Point4& v, Interval& valid, int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, Color& v, Interval& valid, int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, AColor& v, Interval& valid, int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, const MCHAR*& v, Interval& valid,
                  int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, Mtl*& v, Interval& valid, int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, Texmap*& v, Interval& valid, int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, INode*& v, Interval& valid, int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, ReferenceTarget*& v, Interval& valid,
                  int tabIndex = 0) override;
    BOOL GetValue(ParamID id, TimeValue t, Matrix3& v, Interval& valid, int tabIndex = 0) override;

    BOOL SetValue(ParamID id, TimeValue t, float v, int tabIndex = 0) override;
    BOOL SetValue(ParamID id, TimeValue t, int v, int tabIndex = 0) override;
    BOOL SetValue(ParamID id, TimeValue t, const Point3& v, int tabIndex = 0) override;
    BOOL SetValue(ParamID id, TimeValue t, const Color& v, int tabIndex = 0) override;
    BOOL SetValue(ParamID id, TimeValue t, const Point4& v, int tabIndex = 0) override;
    BOOL SetValue(ParamID id, TimeValue t, const MCHAR* v, int tabIndex = 0) override;
    BOOL SetValue(ParamID id, TimeValue t, ReferenceTarget* v, int tabIndex = 0) override;

    MaxSDK::AssetManagement::AssetUser GetAssetUser(ParamID id, int tabIndex = 0) override;

  private:
    [[nodiscard]] const ParamValue& Default(int index) const;
    [[nodiscard]] const Scalar* Read(ParamID id, int tabIndex, Storage storage) const;
    template <class T>
    BOOL ReadAs(ParamID id, int tabIndex, Storage storage, T& v) const;
    template <class T>
    BOOL ReadReference(ParamID id, ParamType2 type, T*& v, int tabIndex) const;
    BOOL Write(ParamID id, int tabIndex, Storage storage, Scalar value);
    [[nodiscard]] ParamType2 TypeAt(int index) const;

    BlockSlot slot_;
    std::map<int, ParamValue> values_; // by index; those that are not the default
    unsigned long version_ = 0;
};

/// Whether the parameter type can hold that thing (null fits every reference).
[[nodiscard]] bool FitsReference(ParamType2 type, ReferenceTarget* target);

} // namespace simhost
