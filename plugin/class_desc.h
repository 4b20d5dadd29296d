#pragma once
#include <iparamb2.h>
#include <max.h>

namespace brimwave {

/// Describes the library's one class, the utility, to the host. Keeps no parameter blocks.
class BrimwaveClassDesc : public ClassDesc2 {
  public:
    int IsPublic() override { return TRUE; }
    void* Create(BOOL loading = FALSE) override;
    const MCHAR* ClassName() override { return _T("Brimwave Platform"); }
    const MCHAR* NonLocalizedClassName() override { return _T("Brimwave Platform"); }
    SClass_ID SuperClassID() override { return UTILITY_CLASS_ID; }
    Class_ID ClassID() override { return Class_ID(0x7F3A1C9E, 0x4B2D6E11); }
    const MCHAR* Category() override { return _T("Corona Tools"); }
    const MCHAR* InternalName() override { return _T("BrimwavePlatform"); }
    HINSTANCE HInstance() override;
};

/// The one descriptor; it lives as long as the library.
[[nodiscard]] BrimwaveClassDesc& TheClassDesc();

} // namespace brimwave
