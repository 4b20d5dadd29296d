#include "simhost/classes/json_value.h"

namespace simhost {

namespace {

Point4 ReadPoint4(const JsonView& view) {
    if (!view.IsArray() || (view.Size() != 3 && view.Size() != 4))
        view.Expected("three or four numbers");
    Point4 p(0, 0, 0, 1);
    for (size_t i = 0; i < view.Size(); ++i)
        p[static_cast<int>(i)] = view.Element(i).Number();
    return p;
}

Scalar ReadScalar(const JsonView& view, ParamType2 type, const ReferenceReader& references) {
    switch (StorageOf(type)) {
    case Storage::Number:
        return view.Number();
    case Storage::Integer:
        if (ElementType(type) == TYPE_BOOL || view.Raw().is_boolean())
            return view.Bool() ? 1 : 0;
        return view.Integer();
    case Storage::Three:
        if (ElementType(type) == TYPE_POINT2) {
            view.Array(2);
            return Point3(view.Element(0).Number(), view.Element(1).Number(), 0);
        }
        return ReadPoint3(view);
    case Storage::Four:
        return ReadPoint4(view);
    case Storage::String:
        return view.IsNull() ? Text() : Text(view.Text());
    case Storage::Matrix:
        return ReadMatrix(view);
    case Storage::Reference:
        if (view.IsNull())
            return Ref<ReferenceTarget>();
        if (references)
            return Ref<ReferenceTarget>(references(view, ElementType(type)));
        view.Expected("null");
    case Storage::Unsupported:
        break;
    }
    view.Complain("values of this type can't be read");
}

} // namespace

Point3 ReadPoint3(const JsonView& view) {
    if (!view.IsArray() || view.Size() != 3)
        view.Expected("three numbers");
    return {view.Element(0).Number(), view.Element(1).Number(), view.Element(2).Number()};
}

Matrix3 ReadMatrix(const JsonView& view) {
    if (!view.IsArray() || view.Size() != 4)
        view.Expected("four rows of three numbers");
    Matrix3 m;
    for (int i = 0; i < 4; ++i)
        m.SetRow(i, ReadPoint3(view.Element(static_cast<size_t>(i))));
    return m;
}

ParamValue ReadValue(const JsonView& view, ParamType2 type, const ReferenceReader& references) {
    if (!IsTable(type))
        return ReadScalar(view, type, references);
    Table table;
    view.ForElements(
        [&](const JsonView& element) { table.push_back(ReadScalar(element, type, references)); });
    return table;
}

} // namespace simhost
