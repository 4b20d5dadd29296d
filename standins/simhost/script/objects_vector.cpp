// Points, colours, rotations, transforms and intervals.
#include <algorithm>
#include <cmath>

#include "simhost/script/convert.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/objects.h"
#include "simhost/script/raise.h"

namespace simhost::script {
namespace {

constexpr std::wstring_view axisNames[] = {L"x", L"y", L"z", L"w"};
constexpr std::wstring_view colorNames[] = {L"r", L"g", L"b", L"a"};
constexpr std::wstring_view longColorNames[] = {L"red", L"green", L"blue", L"alpha"};

Value RowVector(const std::array<float, 3>& row) {
    return MakeVector(VectorKind::Point3, row[0], row[1], row[2]);
}

// Hue 0..255, saturation 0..255, value 0..255 of a colour.
std::array<float, 3> ToHsv(const std::array<float, 4>& color) {
    const float high = std::max({color[0], color[1], color[2]});
    const float low = std::min({color[0], color[1], color[2]});
    const float range = high - low;
    float hue = 0;
    if (range > 0) {
        if (high == color[0])
            hue = (color[1] - color[2]) / range;
        else if (high == color[1])
            hue = 2 + (color[2] - color[0]) / range;
        else
            hue = 4 + (color[0] - color[1]) / range;
        hue = hue < 0 ? hue + 6 : hue;
    }
    return {hue / 6 * 255, high > 0 ? range / high * 255 : 0, high};
}

} // namespace

size_t VectorObject::Size() const {
    switch (kind_) {
    case VectorKind::Point2:
        return 2;
    case VectorKind::Point3:
    case VectorKind::Euler:
        return 3;
    default:
        return 4;
    }
}

std::wstring VectorObject::ClassName() const {
    switch (kind_) {
    case VectorKind::Point2:
        return L"Point2";
    case VectorKind::Point3:
        return L"Point3";
    case VectorKind::Point4:
        return L"Point4";
    case VectorKind::Color:
        return L"Color";
    case VectorKind::Quat:
        return L"Quat";
    case VectorKind::Euler:
        break;
    }
    return L"EulerAngles";
}

void VectorObject::Print(Printer& printer, bool) const {
    const wchar_t* opening = L"[";
    const wchar_t* gap = L",";
    const wchar_t* closing = L"]";
    size_t size = Size();
    if (kind_ == VectorKind::Color || kind_ == VectorKind::Quat || kind_ == VectorKind::Euler) {
        opening = kind_ == VectorKind::Color  ? L"(color "
                  : kind_ == VectorKind::Quat ? L"(quat "
                                              : L"(eulerAngles ";
        gap = L" ";
        closing = L")";
        if (kind_ == VectorKind::Color && components_[3] == 255)
            size = 3;
    }
    printer.Put(opening);
    for (size_t i = 0; i < size; ++i) {
        printer.Put(i > 0 ? gap : L"");
        printer.PutNumber(static_cast<double>(components_[i]));
    }
    printer.Put(closing);
}

bool VectorObject::Equals(const Object& other) const {
    const auto* vector = dynamic_cast<const VectorObject*>(&other);
    return vector && vector->kind_ == kind_ && vector->components_ == components_;
}

int VectorObject::ComponentOf(const std::wstring& name) const {
    for (size_t i = 0; i < Size(); ++i) {
        const bool color = kind_ == VectorKind::Color;
        if (color ? name == colorNames[i] || name == longColorNames[i] : name == axisNames[i])
            return static_cast<int>(i);
    }
    return -1;
}

bool VectorObject::GetProperty(Interpreter&, const std::wstring& name, Value& result) {
    if (const int component = ComponentOf(name); component >= 0) {
        result = Value::Float(components_[static_cast<size_t>(component)]);
        return true;
    }
    if (kind_ != VectorKind::Color)
        return false;
    const std::array<float, 3> hsv = ToHsv(components_);
    if (name == L"h" || name == L"hue")
        result = Value::Float(hsv[0]);
    else if (name == L"s" || name == L"saturation")
        result = Value::Float(hsv[1]);
    else if (name == L"v" || name == L"value")
        result = Value::Float(hsv[2]);
    else
        return false;
    return true;
}

bool VectorObject::SetProperty(Interpreter&, const std::wstring& name, const Value& value) {
    const int component = ComponentOf(name);
    if (component < 0)
        return false;
    components_[static_cast<size_t>(component)] = ToFloat(value);
    return true;
}

bool VectorObject::GetIndex(Interpreter&, const Value& index, Value& result) {
    const size_t position = ToPosition(index);
    if (position >= Size())
        return false;
    result = Value::Float(components_[position]);
    return true;
}

bool VectorObject::SetIndex(Interpreter&, const Value& index, const Value& value) {
    const size_t position = ToPosition(index);
    if (position >= Size())
        return false;
    components_[position] = ToFloat(value);
    return true;
}

void MatrixObject::Print(Printer& printer, bool) const {
    printer.Put(L"(matrix3");
    for (const auto& row : rows_) {
        printer.Put(L" ");
        printer.Put(RowVector(row), true);
    }
    printer.Put(L")");
}

bool MatrixObject::Equals(const Object& other) const {
    const auto* matrix = dynamic_cast<const MatrixObject*>(&other);
    return matrix && matrix->rows_ == rows_;
}

bool MatrixObject::GetProperty(Interpreter&, const std::wstring& name, Value& result) {
    if (name.size() == 4 && name.starts_with(L"row") && name[3] >= L'1' && name[3] <= L'4')
        result = RowVector(rows_[static_cast<size_t>(name[3] - L'1')]);
    else if (name == L"pos" || name == L"translation" || name == L"position")
        result = RowVector(rows_[3]);
    else if (name == L"scalepart" || name == L"scale")
        result = MakeVector(VectorKind::Point3, std::hypot(rows_[0][0], rows_[0][1], rows_[0][2]),
                            std::hypot(rows_[1][0], rows_[1][1], rows_[1][2]),
                            std::hypot(rows_[2][0], rows_[2][1], rows_[2][2]));
    else
        return false;
    return true;
}

bool MatrixObject::SetProperty(Interpreter&, const std::wstring& name, const Value& value) {
    size_t row = 4;
    if (name.size() == 4 && name.starts_with(L"row") && name[3] >= L'1' && name[3] <= L'4')
        row = static_cast<size_t>(name[3] - L'1');
    else if (name == L"pos" || name == L"translation" || name == L"position")
        row = 3;
    if (row == 4)
        return false;
    const VectorObject& point = ToVector(value, VectorKind::Point3);
    rows_[row] = {point.At(0), point.At(1), point.At(2)};
    return true;
}

bool MatrixObject::GetIndex(Interpreter&, const Value& index, Value& result) {
    const size_t position = ToPosition(index);
    if (position >= rows_.size())
        return false;
    result = RowVector(rows_[position]);
    return true;
}

void IntervalObject::Print(Printer& printer, bool) const {
    printer.Put(L"(interval ");
    printer.Put(Value::Time(start_), true);
    printer.Put(L" ");
    printer.Put(Value::Time(end_), true);
    printer.Put(L")");
}

bool IntervalObject::GetProperty(Interpreter&, const std::wstring& name, Value& result) {
    if (name != L"start" && name != L"end")
        return false;
    result = Value::Time(name == L"start" ? start_ : end_);
    return true;
}

bool IntervalObject::SetProperty(Interpreter&, const std::wstring& name, const Value& value) {
    if (name != L"start" && name != L"end")
        return false;
    const double ticks =
        value.Is(Type::Time) ? value.AsReal() : ToReal(value) * ticksPerSecond / 30;
    (name == L"start" ? start_ : end_) = ticks;
    return true;
}

Value MakeVector(VectorKind kind, float x, float y, float z, float w) {
    return {std::make_shared<VectorObject>(kind, std::array<float, 4>{x, y, z, w})};
}

} // namespace simhost::script
