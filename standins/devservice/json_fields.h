#pragma once
// The JSON that people write for the service: accounts and faults. Every error names the field.
#include "devservice/accounts.h"
#include "devservice/faults.h"

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>

namespace devservice {

class JsonFieldError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// The array member `key`; empty when it is missing.
[[nodiscard]] nlohmann::json OptionalArray(const nlohmann::json& object, const char* key);

/// {"token": "...", "balance": 42, "daily_limit": 10, "name": "...", "faults": [...]}
[[nodiscard]] Account AccountFromJson(const nlohmann::json& object);

/// One fault: the members are those of Fault, see docs/service-api.md.
[[nodiscard]] Fault FaultFromJson(const nlohmann::json& object);

} // namespace devservice
