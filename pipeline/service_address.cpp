#include "pipeline/service_address.h"

#include "pipeline/trim.h"

#include <max.h>

namespace brimwave {
namespace {

std::wstring EnvironmentText(const wchar_t* name) {
    std::wstring text(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
    if (text.empty())
        return text;
    text.resize(GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size())));
    return text;
}

} // namespace

std::wstring ServiceBaseAddress() {
    const std::wstring set = EnvironmentText(L"BRIMWAVE_SERVICE_URL");
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

} // namespace brimwave
