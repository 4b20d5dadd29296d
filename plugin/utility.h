#pragma once
#include "plugin/panel.h"

#include <max.h>
#include <utilapi.h>

namespace brimwave {

/// The utility of the host's Utilities list: opens and closes the panel, nothing else.
class BrimwaveUtility : public UtilityObj {
  public:
    void BeginEditParams(Interface* ip, IUtil* iu) override;
    void EndEditParams(Interface* ip, IUtil* iu) override;
    /// Nothing: the object is static.
    void DeleteThis() override {}

    /// Frees the banner picture that outlives the panel's windows.
    void ReleaseBanner() noexcept { panel_.ReleaseBanner(); }

  private:
    Panel panel_;
};

/// The one utility object; it lives as long as the library.
[[nodiscard]] BrimwaveUtility& TheUtility();

} // namespace brimwave
