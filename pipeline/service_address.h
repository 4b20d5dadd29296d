#pragma once
#include <string>

namespace brimwave {

/// Base address of the conversion service, without a trailing "/": the environment variable
/// BRIMWAVE_SERVICE_URL, or the build's own default when that is unset or blank.
[[nodiscard]] std::wstring ServiceBaseAddress();

/// Where users find and renew their token and top up their balance.
[[nodiscard]] std::wstring ServiceDashboardAddress();

/// The service's web page, which the panel's link shows and opens.
[[nodiscard]] std::wstring ServiceWebAddress();

/// What a user is told whose token the service refuses.
[[nodiscard]] std::wstring RefusedTokenText();

} // namespace brimwave
