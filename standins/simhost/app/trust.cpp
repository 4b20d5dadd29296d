#include "simhost/app/trust.h"

#include "simhost/app/options.h"

#include <windows.h>

#include <wincrypt.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

namespace simhost {
namespace {

struct StoreCloser {
    void operator()(void* store) const noexcept { CertCloseStore(store, 0); }
};
using CertificateStore = std::unique_ptr<void, StoreCloser>;

std::vector<BYTE> DecodePem(std::string_view pem) {
    DWORD size = 0;
    const auto length = static_cast<DWORD>(pem.size());
    CryptStringToBinaryA(pem.data(), length, CRYPT_STRING_BASE64HEADER, nullptr, &size, nullptr,
                         nullptr);
    std::vector<BYTE> bytes(size);
    if (!size || !CryptStringToBinaryA(pem.data(), length, CRYPT_STRING_BASE64HEADER, bytes.data(),
                                       &size, nullptr, nullptr))
        return {};
    return bytes;
}

int AddAll(void* store, std::string_view pem) {
    constexpr std::string_view begin = "-----BEGIN CERTIFICATE-----";
    constexpr std::string_view end = "-----END CERTIFICATE-----";
    int added = 0;
    for (auto from = pem.find(begin); from != std::string_view::npos;) {
        const auto to = pem.find(end, from);
        if (to == std::string_view::npos)
            break;
        const std::vector<BYTE> bytes = DecodePem(pem.substr(from, to + end.size() - from));
        added += !bytes.empty() &&
                 CertAddEncodedCertificateToStore(store, X509_ASN_ENCODING, bytes.data(),
                                                  static_cast<DWORD>(bytes.size()),
                                                  CERT_STORE_ADD_REPLACE_EXISTING, nullptr);
        from = pem.find(begin, to);
    }
    return added;
}

} // namespace

void TrustCertificates(const std::wstring& pemFile) {
    std::ifstream file(std::filesystem::path(pemFile), std::ios::binary);
    if (!file)
        throw StartError(L"certificate file unreadable: " + pemFile);
    const std::string pem{std::istreambuf_iterator<char>(file), {}};
    const CertificateStore store(
        CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, CERT_SYSTEM_STORE_CURRENT_USER, L"ROOT"));
    if (!store || AddAll(store.get(), pem) == 0)
        throw StartError(L"no certificate in " + pemFile);
}

} // namespace simhost
