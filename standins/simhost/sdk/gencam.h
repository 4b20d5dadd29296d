#pragma once
#include "object.h"

/// A camera of the host's own family. FOV horizontal in radians; distances in system units.
class GenCamera : public CameraObject {
  public:
    virtual void SetFOV(TimeValue t, float radians) = 0;
    virtual void SetOrtho(BOOL on) = 0;
};
