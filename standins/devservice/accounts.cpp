#include "devservice/accounts.h"

#include "devservice/json_fields.h"
#include "devservice/start_error.h"

#include <algorithm>
#include <chrono>
#include <fstream>

namespace devservice {
namespace {

std::int64_t DaysUtc() {
    return std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now())
        .time_since_epoch()
        .count();
}

} // namespace

std::optional<std::int32_t> Account::ConversionsLeft() const {
    if (!dailyLimit || *dailyLimit == 0)
        return std::nullopt;
    return std::max(0, *dailyLimit - usedToday);
}

AccountBook::AccountBook(std::function<std::int64_t()> today)
    : today_(today ? std::move(today) : DaysUtc) {}

void AccountBook::Load(const std::filesystem::path& file, FaultBoard& faults) {
    std::ifstream in(file, std::ios::binary);
    if (!in)
        throw StartError("cannot read the accounts file " + file.string());
    try {
        const auto document = nlohmann::json::parse(in);
        if (!document.is_array())
            throw JsonFieldError("an array of accounts was expected");
        for (const auto& entry : document) {
            Account account = AccountFromJson(entry);
            if (Find(account.token))
                throw JsonFieldError("two accounts share one token");
            for (const auto& fault : OptionalArray(entry, "faults"))
                faults.Add(account.token, FaultFromJson(fault));
            Put(std::move(account));
        }
    } catch (const nlohmann::json::exception& error) {
        throw StartError(file.string() + " is not valid JSON: " + error.what());
    } catch (const JsonFieldError& error) {
        throw StartError(file.string() + ": " + error.what());
    }
}

void AccountBook::Put(Account account) {
    const std::lock_guard lock(mutex_);
    account.day = today_();
    std::string token = account.token;
    accounts_.insert_or_assign(std::move(token), std::move(account));
}

Account* AccountBook::Today(const std::string& token) {
    const auto found = accounts_.find(token);
    if (found == accounts_.end())
        return nullptr;
    Account& account = found->second;
    if (const std::int64_t day = today_(); account.day != day) {
        account.day = day;
        account.usedToday = 0;
    }
    return &account;
}

std::optional<Account> AccountBook::Find(const std::string& token) {
    const std::lock_guard lock(mutex_);
    const Account* account = Today(token);
    return account ? std::optional(*account) : std::nullopt;
}

ChargeResult AccountBook::Charge(const std::string& token) {
    const std::lock_guard lock(mutex_);
    Account* account = Today(token);
    if (!account)
        return ChargeResult::UnknownToken;
    if (account->balance <= 0)
        return ChargeResult::NoCredit;
    if (account->ConversionsLeft() == 0)
        return ChargeResult::DailyLimitReached;
    --account->balance;
    ++account->usedToday;
    return ChargeResult::Charged;
}

void AccountBook::Refund(const std::string& token) {
    const std::lock_guard lock(mutex_);
    if (Account* account = Today(token)) {
        ++account->balance;
        account->usedToday = std::max(0, account->usedToday - 1);
    }
}

std::size_t AccountBook::Size() {
    const std::lock_guard lock(mutex_);
    return accounts_.size();
}

} // namespace devservice
