#pragma once
#include "host/kernel_handle.h"
#include "service/account.h"

#include <windows.h>

#include <memory>
#include <string>

namespace brimwave {

/// Brings a finished check to the panel: the long parameter is the BalanceResult, whose ownership
/// comes with the message. BalanceCheck::Take turns it into an owner.
inline constexpr UINT balanceChecked = WM_APP + 1;

/// One token check on a thread of its own. The panel may close before the check ends: then the
/// result is freed wherever it is, on the thread, in the message queue or on its way there.
/// Everything but the check itself happens on the panel's thread.
class BalanceCheck {
  public:
    /// Null when no thread could be started. `panel` gets one balanceChecked.
    [[nodiscard]] static std::unique_ptr<BalanceCheck>
    Start(HWND panel, std::wstring_view baseAddress, std::wstring_view token);

    /// Lets go of the check; call it while the panel's window still exists. Does not wait for
    /// the network.
    ~BalanceCheck();
    BalanceCheck(const BalanceCheck&) = delete;
    BalanceCheck& operator=(const BalanceCheck&) = delete;

    /// The result that a balanceChecked carries; null when it is not this check's.
    [[nodiscard]] std::unique_ptr<BalanceResult> Take(LPARAM record);

  private:
    struct Handover;
    BalanceCheck(std::shared_ptr<Handover> handover, KernelHandle thread);
    static DWORD WINAPI Run(void* argument);

    std::shared_ptr<Handover> handover_;
    KernelHandle thread_;
};

} // namespace brimwave
