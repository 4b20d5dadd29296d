#pragma once
// What a plug-in library offers to the host.
#include "iparamb2.h"
#include "ref.h"
#include "tab.h"

class Interface;

class ClassDesc {
  public:
    virtual ~ClassDesc() = default;
    virtual int IsPublic() = 0;
    virtual void* Create(BOOL loading = FALSE) = 0;
    virtual const MCHAR* ClassName() = 0;
    virtual const MCHAR* NonLocalizedClassName() = 0;
    virtual SClass_ID SuperClassID() = 0;
    virtual Class_ID ClassID() = 0;
    virtual const MCHAR* Category() = 0;
    virtual const MCHAR* InternalName() { return nullptr; }
    virtual HINSTANCE HInstance() { return nullptr; }
};

class ClassDesc2 : public ClassDesc {
  public:
    virtual int NumParamBlockDescs() { return blockDescs_.Count(); }
    virtual ParamBlockDesc2* GetParamBlockDesc(int i) { return blockDescs_[i]; }

  private:
    Tab<ParamBlockDesc2*> blockDescs_;
};
