#include "host/param_read.h"

#include "host/sdk_compat.h"

namespace brimwave {
namespace {

template <class T>
bool Get(IParamBlock2& block, ParamID id, TimeValue time, int index, T& value) {
    Interval valid = FOREVER;
    return block.GetValue(id, time, value, valid, index) != FALSE;
}

/// A colour with alpha is asked for as such first; some classes answer it only without.
bool GetColor(IParamBlock2& block, ParamID id, bool withAlpha, TimeValue time, int index,
              ColorValue& color) {
    AColor four;
    if (withAlpha && Get(block, id, time, index, four)) {
        color = {four.r, four.g, four.b};
        return true;
    }
    Color three;
    if (!Get(block, id, time, index, three))
        return false;
    color = {three.r, three.g, three.b};
    return true;
}

bool GetString(IParamBlock2& block, ParamID id, TimeValue time, int index, std::wstring& text) {
    const MCHAR* chars = nullptr;
    if (!Get(block, id, time, index, chars))
        return false;
    text = HostText(chars);
    return true;
}

bool Read(IParamBlock2& block, ParamID id, ParamKind kind, bool withAlpha, TimeValue time,
          int index, ParamValue& value) {
    bool read = false;
    switch (kind) {
    case ParamKind::None:
        return false;
    case ParamKind::Float:
        read = Get(block, id, time, index, value.floatValue);
        break;
    case ParamKind::Int:
        read = Get(block, id, time, index, value.intValue);
        break;
    case ParamKind::Bool: {
        int number = 0;
        read = Get(block, id, time, index, number);
        value.boolValue = number != 0;
        break;
    }
    case ParamKind::String:
        read = GetString(block, id, time, index, value.stringValue);
        break;
    case ParamKind::Color:
        read = GetColor(block, id, withAlpha, time, index, value.color);
        break;
    case ParamKind::Vector: {
        Point3 point;
        read = Get(block, id, time, index, point);
        value.vector = {point.x, point.y, point.z};
        break;
    }
    }
    if (read)
        value.kind = kind;
    return read;
}

} // namespace

ParamKind ScalarKindOf(ParamType2 type) {
    switch (static_cast<int>(type)) {
    case TYPE_FLOAT:
    case TYPE_ANGLE:
    case TYPE_PCNT_FRAC:
    case TYPE_WORLD:
        return ParamKind::Float;
    case TYPE_INT:
    case TYPE_INDEX:
        return ParamKind::Int;
    case TYPE_BOOL:
        return ParamKind::Bool;
    case TYPE_STRING:
    case TYPE_FILENAME:
        return ParamKind::String;
    case TYPE_RGBA:
    case TYPE_FRGBA:
        return ParamKind::Color;
    case TYPE_POINT3:
        return ParamKind::Vector;
    default:
        return ParamKind::None;
    }
}

ParamKind TabKindOf(ParamType2 type) {
    switch (static_cast<int>(type)) {
    case TYPE_FLOAT_TAB:
        return ParamKind::Float;
    case TYPE_INT_TAB:
        return ParamKind::Int;
    case TYPE_BOOL_TAB:
        return ParamKind::Bool;
    case TYPE_STRING_TAB:
        return ParamKind::String;
    case TYPE_RGBA_TAB:
    case TYPE_FRGBA_TAB:
        return ParamKind::Color;
    case TYPE_POINT3_TAB:
        return ParamKind::Vector;
    default:
        return ParamKind::None;
    }
}

bool ReadScalar(IParamBlock2& block, ParamID id, ParamType2 type, TimeValue time,
                ParamValue& value) {
    return Read(block, id, ScalarKindOf(type), type == TYPE_FRGBA, time, 0, value);
}

bool ReadElement(IParamBlock2& block, ParamID id, ParamType2 type, TimeValue time, int index,
                 ParamValue& value) {
    return Read(block, id, TabKindOf(type), type == TYPE_FRGBA_TAB, time, index, value);
}

std::optional<float> ReadNumber(IParamBlock2& block, ParamID id, ParamType2 type, TimeValue time,
                                int index) {
    const auto element = static_cast<ParamType2>(type & ~TYPE_TAB);
    ParamValue value;
    if (!Read(block, id, ScalarKindOf(element), false, time, index, value))
        return std::nullopt;
    return value.Number();
}

ReferenceTarget* ReadReference(IParamBlock2& block, ParamID id, ParamType2 type, TimeValue time) {
    if (type == TYPE_TEXMAP)
        return ReadTexmap(block, id, time, 0);
    if (type == TYPE_MTL) {
        Mtl* material = nullptr;
        return Get(block, id, time, 0, material) ? material : nullptr;
    }
    ReferenceTarget* target = nullptr;
    return Get(block, id, time, 0, target) ? target : nullptr;
}

Texmap* ReadTexmap(IParamBlock2& block, ParamID id, TimeValue time, int index) {
    Texmap* map = nullptr;
    return Get(block, id, time, index, map) ? map : nullptr;
}

} // namespace brimwave
