#pragma once
#include <utilapi.h>

namespace simhost {

/// The host's Utilities panel around one utility: begins and ends its editing.
class UtilityPanel : public IUtil {
  public:
    explicit UtilityPanel(UtilityObj& utility) : utility_(utility) {}
    ~UtilityPanel() override { End(); }
    UtilityPanel(const UtilityPanel&) = delete;
    UtilityPanel& operator=(const UtilityPanel&) = delete;

    /// The user picks the utility, for the first time or once more.
    void Open() {
        open_ = true;
        utility_.BeginEditParams(GetCOREInterface(), this);
    }
    void CloseUtility() override { End(); }

  private:
    void End() {
        if (open_)
            utility_.EndEditParams(GetCOREInterface(), this);
        open_ = false;
    }

    UtilityObj& utility_;
    bool open_ = false;
};

} // namespace simhost
