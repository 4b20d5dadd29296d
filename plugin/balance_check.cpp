#include "plugin/balance_check.h"

#include "host/attempt.h"

#include <atomic>

namespace brimwave {
namespace {

/// The host may unload the library while a check still runs in it. A thread that must outlive
/// that holds the library and lets go in the same call that ends it.
class LibraryHold {
  public:
    LibraryHold() {
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           reinterpret_cast<LPCWSTR>(&LibraryHold::Anchor), &library_);
    }
    ~LibraryHold() {
        if (library_)
            FreeLibrary(library_);
    }
    LibraryHold(const LibraryHold&) = delete;
    LibraryHold& operator=(const LibraryHold&) = delete;

    [[nodiscard]] HMODULE Release() {
        const HMODULE library = library_;
        library_ = nullptr;
        return library;
    }

  private:
    static void Anchor() {}
    HMODULE library_ = nullptr;
};

enum class Phase { Checking, Posting, Abandoned };

} // namespace

/// What passes between the panel and the thread; it lives as long as either.
struct BalanceCheck::Handover {
    HWND panel = nullptr;
    std::wstring baseAddress;
    std::wstring token;
    std::unique_ptr<BalanceResult> result = std::make_unique<BalanceResult>();
    // Who frees the result is settled by one exchange: the thread when it finds the check
    // abandoned, the panel in every other case.
    std::atomic<Phase> phase{Phase::Checking};
    std::atomic<BalanceResult*> posted{nullptr};
    LibraryHold library;

    void Check() noexcept {
        // Out of memory leaves an empty error text, which is all that can be told.
        Attempt([this] { *result = FetchBalance(baseAddress, token); });
        Phase expected = Phase::Checking;
        if (!phase.compare_exchange_strong(expected, Phase::Posting))
            return;
        posted = result.get();
        if (PostMessageW(panel, balanceChecked, 0, reinterpret_cast<LPARAM>(result.get())))
            static_cast<void>(result.release()); // the message owns it now
        else
            posted = nullptr;
    }
};

BalanceCheck::BalanceCheck(std::shared_ptr<Handover> handover, KernelHandle thread)
    : handover_(std::move(handover)), thread_(std::move(thread)) {}

std::unique_ptr<BalanceCheck> BalanceCheck::Start(HWND panel, std::wstring_view baseAddress,
                                                  std::wstring_view token) {
    auto handover = std::make_shared<Handover>();
    handover->panel = panel;
    handover->baseAddress = baseAddress;
    handover->token = token;
    auto argument = std::make_unique<std::shared_ptr<Handover>>(handover);
    // Not the C runtime's way to start a thread: some runtimes hold the library for their threads
    // too, and let go only of those that return, which this one must not do.
    KernelHandle thread(CreateThread(nullptr, 0, &BalanceCheck::Run, argument.get(), 0, nullptr));
    if (!thread)
        return nullptr;
    static_cast<void>(argument.release()); // the thread owns it now
    return std::unique_ptr<BalanceCheck>(new BalanceCheck(std::move(handover), std::move(thread)));
}

DWORD WINAPI BalanceCheck::Run(void* argument) {
    HMODULE library = nullptr;
    {
        const std::unique_ptr<std::shared_ptr<Handover>> owner(
            static_cast<std::shared_ptr<Handover>*>(argument));
        library = (*owner)->library.Release();
        (*owner)->Check();
    }
    FreeLibraryAndExitThread(library, 0);
}

BalanceCheck::~BalanceCheck() {
    Phase expected = Phase::Checking;
    if (handover_->phase.compare_exchange_strong(expected, Phase::Abandoned))
        return;
    // The result was posted or is being posted, which is all that the thread has left to do.
    WaitForSingleObject(thread_.get(), INFINITE);
    MSG message{};
    while (handover_->posted &&
           PeekMessageW(&message, handover_->panel, balanceChecked, balanceChecked, PM_REMOVE)) {
        if (message.message == WM_QUIT) { // comes through every filter, and is the host's
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        static_cast<void>(Take(message.lParam));
    }
}

std::unique_ptr<BalanceResult> BalanceCheck::Take(LPARAM record) {
    auto* result = reinterpret_cast<BalanceResult*>(record);
    if (!result || !handover_->posted.compare_exchange_strong(result, nullptr))
        return nullptr;
    return std::unique_ptr<BalanceResult>(result);
}

} // namespace brimwave
