#include "devservice/faults.h"

#include <algorithm>
#include <utility>

namespace devservice {

void FaultBoard::Add(const std::string& token, Fault fault) {
    const std::lock_guard lock(mutex_);
    faults_[token].push_back(std::move(fault));
}

void FaultBoard::Clear() {
    const std::lock_guard lock(mutex_);
    faults_.clear();
}

std::optional<Fault> FaultBoard::Take(const std::string& token, Fault::On exchange) {
    const std::lock_guard lock(mutex_);
    const auto entry = faults_.find(token);
    if (entry == faults_.end())
        return std::nullopt;
    auto& list = entry->second;
    const auto found = std::find_if(list.begin(), list.end(), [&](const Fault& fault) {
        return fault.on == Fault::On::Any || fault.on == exchange;
    });
    if (found == list.end())
        return std::nullopt;
    Fault fault = *found;
    if (found->times && --*found->times == 0)
        list.erase(found);
    return fault;
}

} // namespace devservice
