#pragma once
#include <max.h>

namespace brimwave {

/// The host's single-letter shortcuts stay off while this lives, so that an edit box gets what
/// is typed into it.
class AcceleratorPause {
  public:
    AcceleratorPause() { DisableAccelerators(); }
    ~AcceleratorPause() { EnableAccelerators(); }
    AcceleratorPause(const AcceleratorPause&) = delete;
    AcceleratorPause& operator=(const AcceleratorPause&) = delete;
};

} // namespace brimwave
