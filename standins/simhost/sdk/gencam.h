#pragma once
#include "object.h"

/// A camera of the host's own family.
class GenCamera : public CameraObject {};
