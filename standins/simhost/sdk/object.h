#pragma once
// Objects: what a node places in the scene.
#include "imtl.h"
#include "matrix3.h"
#include "mesh.h"

class Object;

class ObjectState {
  public:
    Object* obj = nullptr;
    ObjectState() = default;
    explicit ObjectState(Object* object) : obj(object) {}
};

class BaseObject : public ReferenceTarget {
  public:
    virtual const MCHAR* GetObjectName(bool localized) = 0;
};

class Object : public BaseObject {
  public:
    virtual int IsRenderable() { return 1; }
    virtual int CanConvertToType(Class_ID /*id*/) { return 0; }
    /// The object itself when it is of that type already, a new object (to be freed by the
    /// caller with MaybeAutoDelete) when a conversion was needed, null when there is none.
    virtual Object* ConvertToType(TimeValue /*t*/, Class_ID /*id*/) { return nullptr; }
};

class GeomObject : public Object {
  public:
    SClass_ID SuperClassID() override { return GEOMOBJECT_CLASS_ID; }
};

class ShapeObject : public Object {
  public:
    SClass_ID SuperClassID() override { return SHAPE_CLASS_ID; }
};

class HelperObject : public Object {
  public:
    SClass_ID SuperClassID() override { return HELPER_CLASS_ID; }
    int IsRenderable() override { return 0; }
};

class LightObject : public Object {
  public:
    SClass_ID SuperClassID() override { return LIGHT_CLASS_ID; }
    int IsRenderable() override { return 0; }
    virtual BOOL GetUseLight() = 0;
};

inline constexpr int CAM_HITHER_CLIP = 1;
inline constexpr int CAM_YON_CLIP = 2;

struct CameraState {
    BOOL isOrtho = FALSE;
    float fov = 0; // horizontal, radians
    float tdist = 0;
    int manualClip = 0;
    float hither = 0;
    float yon = 0;
};

class CameraObject : public Object {
  public:
    SClass_ID SuperClassID() override { return CAMERA_CLASS_ID; }
    int IsRenderable() override { return 0; }
    virtual RefResult EvalCameraState(TimeValue t, Interval& valid, CameraState* state) = 0;
    virtual BOOL IsOrtho() = 0;
    virtual float GetFOV(TimeValue t, Interval& valid) = 0;
    virtual int GetManualClip() = 0;
    virtual float GetClipDist(TimeValue t, int which, Interval& valid) = 0;
    virtual float GetTDist(TimeValue t, Interval& valid) = 0;
};
