#pragma once
#include "devservice/faults.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>

namespace devservice {

/// One customer. The numbers live as long as the process; the file is never written.
struct Account {
    std::string token;
    std::string name; ///< what the log calls it
    std::int32_t balance = 0;
    std::optional<std::int32_t> dailyLimit; ///< 0: unlimited; absent: not reported
    std::int32_t usedToday = 0;
    std::int64_t day = 0; ///< the day that usedToday counts for

    /// Conversions left today; nothing when there is no limit.
    [[nodiscard]] std::optional<std::int32_t> ConversionsLeft() const;
};

enum class ChargeResult { Charged, UnknownToken, NoCredit, DailyLimitReached };

/// All accounts, by token. Safe to use from several threads.
class AccountBook {
  public:
    /// `today` gives the number of the current day; the default counts days in UTC.
    explicit AccountBook(std::function<std::int64_t()> today = {});

    /// Reads the accounts file and puts the faults that it orders on `faults`. Throws StartError.
    void Load(const std::filesystem::path& file, FaultBoard& faults);

    /// Adds an account or replaces the one with this token.
    void Put(Account account);
    /// A copy with today's use; nothing for an unknown token.
    [[nodiscard]] std::optional<Account> Find(const std::string& token);
    /// Takes one credit and one of today's conversions.
    [[nodiscard]] ChargeResult Charge(const std::string& token);
    /// Gives back what Charge took.
    void Refund(const std::string& token);
    [[nodiscard]] std::size_t Size();

  private:
    Account* Today(const std::string& token);

    std::function<std::int64_t()> today_;
    std::mutex mutex_;
    std::map<std::string, Account> accounts_;
};

} // namespace devservice
