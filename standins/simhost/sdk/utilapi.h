#pragma once
#include "maxapi.h"
#include "plugapi.h"

class IUtil {
  public:
    virtual ~IUtil() = default;
    virtual void CloseUtility() = 0;
};

/// A utility of the host's Utilities list.
class UtilityObj {
  public:
    virtual ~UtilityObj() = default;
    virtual void BeginEditParams(Interface* ip, IUtil* iu) = 0;
    virtual void EndEditParams(Interface* ip, IUtil* iu) = 0;
    virtual void DeleteThis() = 0;
};
