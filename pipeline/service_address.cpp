#include "pipeline/service_address.h"

#include "host/environment_variable.h"
#include "host/text.h"

namespace brimwave {

std::wstring ServiceBaseAddress() {
    const std::wstring set = ReadEnvironmentVariable(L"BRIMWAVE_SERVICE_URL");
    std::wstring address(Trimmed(set));
    if (address.empty())
        address = BRIMWAVE_DEFAULT_SERVICE_URL;
    while (!address.empty() && address.back() == L'/')
        address.pop_back();
    return address;
}

std::wstring ServiceDashboardAddress() {
    return ServiceBaseAddress() + L"/dashboard";
}

std::wstring ServiceWebAddress() {
    return ServiceBaseAddress();
}

std::wstring RefusedTokenText() {
    return L"Invalid token.\nUpdate your token at " + ServiceDashboardAddress();
}

} // namespace brimwave
