#pragma once
#include <openssl/ssl.h>

#include <filesystem>
#include <memory>
#include <string>

namespace devservice {

struct OpenSslDeleter {
    void operator()(EVP_PKEY* key) const { EVP_PKEY_free(key); }
    void operator()(X509* certificate) const { X509_free(certificate); }
    void operator()(SSL_CTX* context) const { SSL_CTX_free(context); }
    void operator()(SSL* connection) const { SSL_free(connection); }
    void operator()(BIO* bio) const { BIO_free_all(bio); }
    void operator()(BIGNUM* number) const { BN_free(number); }
    void operator()(X509_EXTENSION* extension) const { X509_EXTENSION_free(extension); }
};
template <typename T>
using OpenSslPtr = std::unique_ptr<T, OpenSslDeleter>;

/// A certificate and its private key.
struct Identity {
    OpenSslPtr<X509> certificate;
    OpenSslPtr<EVP_PKEY> key;
};

/// What a server certificate says. Times are days from now.
struct ServerCertificate {
    std::string alternativeNames; ///< "DNS:name,IP:address"
    int validFromDays = -1;
    int validToDays = 365;
};

/// An authority that lives in memory alone: nobody can trust it.
[[nodiscard]] Identity MakeAuthority(const std::string& commonName);

/// The authority of the state folder: read from ca.pem and ca-key.pem, or made and written there
/// (keys with mode 0600) when neither exists. Throws StartError.
[[nodiscard]] Identity LoadOrMakeAuthority(const std::filesystem::path& folder);

/// A server identity signed by `authority`, with a fresh key.
[[nodiscard]] Identity MakeServer(const Identity& authority, const ServerCertificate& what);

/// Writes `name`.pem and `name`-key.pem (mode 0600). Throws StartError.
void WriteIdentity(const std::filesystem::path& folder, const std::string& name,
                   const Identity& identity);

/// The TLS settings of a server that shows `server`, with the authority's certificate behind it.
[[nodiscard]] OpenSslPtr<SSL_CTX> MakeTlsContext(const Identity& server, const Identity& authority);

} // namespace devservice
