#include "devservice/certificates.h"

#include "devservice/start_error.h"

#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/rsa.h>
#include <openssl/x509v3.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>
#include <vector>

namespace devservice {
namespace {

constexpr int authorityDays = 3650;

void Check(bool good, const char* what) {
    if (good)
        return;
    std::array<char, 256> reason{};
    ERR_error_string_n(ERR_get_error(), reason.data(), reason.size());
    throw StartError(std::string(what) + ": " + reason.data());
}

void SetRandomSerial(X509* certificate) {
    const OpenSslPtr<BIGNUM> number(BN_new());
    constexpr int bits = 127; // positive in 16 bytes
    Check(number && BN_rand(number.get(), bits, BN_RAND_TOP_ANY, BN_RAND_BOTTOM_ANY) == 1,
          "no random numbers");
    Check(BN_to_ASN1_INTEGER(number.get(), X509_get_serialNumber(certificate)) != nullptr,
          "cannot number a certificate");
}

void AddExtension(X509* certificate, X509* issuer, int id, const std::string& value) {
    X509V3_CTX context;
    X509V3_set_ctx_nodb(&context);
    X509V3_set_ctx(&context, issuer, certificate, nullptr, nullptr, 0);
    const OpenSslPtr<X509_EXTENSION> extension(
        X509V3_EXT_conf_nid(nullptr, &context, id, value.c_str()));
    Check(extension != nullptr, "cannot make a certificate extension");
    X509_add_ext(certificate, extension.get(), -1);
}

struct CertificateContent {
    std::string commonName;
    int validFromDays;
    int validToDays;
    std::vector<std::pair<int, std::string>> extensions; // by NID
};

// A certificate for a fresh key, signed by `issuer`, or by itself if that is null.
Identity MakeIdentity(const CertificateContent& what, const Identity* issuer) {
    Identity made{.certificate = OpenSslPtr<X509>(X509_new()),
                  .key = OpenSslPtr<EVP_PKEY>(EVP_RSA_gen(2048))};
    Check(made.key != nullptr, "cannot make a key");
    Check(made.certificate != nullptr, "cannot make a certificate");
    const Identity& signer = issuer ? *issuer : made;
    X509* certificate = made.certificate.get();
    X509_set_version(certificate, X509_VERSION_3);
    SetRandomSerial(certificate);
    X509_time_adj_ex(X509_getm_notBefore(certificate), what.validFromDays, 0, nullptr);
    X509_time_adj_ex(X509_getm_notAfter(certificate), what.validToDays, 0, nullptr);
    X509_set_pubkey(certificate, made.key.get());
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate), "CN", MBSTRING_UTF8,
                               reinterpret_cast<const unsigned char*>(what.commonName.c_str()), -1,
                               -1, 0);
    X509_set_issuer_name(certificate, X509_get_subject_name(signer.certificate.get()));
    for (const auto& [id, value] : what.extensions)
        AddExtension(certificate, signer.certificate.get(), id, value);
    Check(X509_sign(certificate, signer.key.get(), EVP_sha256()) > 0, "cannot sign");
    return made;
}

// Opens for writing with the given mode from the first byte on: a key is never readable by others.
OpenSslPtr<BIO> OpenForWriting(const std::filesystem::path& path, mode_t mode) {
    ::unlink(path.c_str());
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (file < 0)
        throw StartError("cannot write " + path.string() + ": " + std::strerror(errno));
    return OpenSslPtr<BIO>(BIO_new_fd(file, BIO_CLOSE));
}

Identity ReadIdentity(const std::filesystem::path& certificate, const std::filesystem::path& key) {
    const OpenSslPtr<BIO> certificateIn(BIO_new_file(certificate.c_str(), "r"));
    const OpenSslPtr<BIO> keyIn(BIO_new_file(key.c_str(), "r"));
    Identity identity;
    if (certificateIn && keyIn) {
        identity.certificate.reset(
            PEM_read_bio_X509(certificateIn.get(), nullptr, nullptr, nullptr));
        identity.key.reset(PEM_read_bio_PrivateKey(keyIn.get(), nullptr, nullptr, nullptr));
    }
    if (!identity.certificate || !identity.key ||
        X509_check_private_key(identity.certificate.get(), identity.key.get()) != 1) {
        throw StartError(certificate.string() + " and " + key.filename().string() +
                         " are no certificate and its key; delete both for new ones");
    }
    return identity;
}

} // namespace

Identity MakeAuthority(const std::string& commonName) {
    return MakeIdentity({commonName,
                         -1,
                         authorityDays,
                         {{NID_basic_constraints, "critical,CA:TRUE"},
                          {NID_key_usage, "critical,keyCertSign,cRLSign"},
                          {NID_subject_key_identifier, "hash"}}},
                        nullptr);
}

Identity LoadOrMakeAuthority(const std::filesystem::path& folder) {
    const auto certificate = folder / "ca.pem";
    const auto key = folder / "ca-key.pem";
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw StartError("cannot make the state folder " + folder.string() + ": " +
                         error.message());
    }
    if (std::filesystem::exists(certificate) || std::filesystem::exists(key)) {
        Identity authority = ReadIdentity(certificate, key);
        if (X509_cmp_current_time(X509_get0_notAfter(authority.certificate.get())) > 0)
            return authority;
        throw StartError(certificate.string() + " has expired; delete it and its key");
    }
    Identity authority = MakeAuthority("Local conversion service authority");
    WriteIdentity(folder, "ca", authority);
    return authority;
}

Identity MakeServer(const Identity& authority, const ServerCertificate& what) {
    return MakeIdentity({"Local conversion service",
                         what.validFromDays,
                         what.validToDays,
                         {{NID_basic_constraints, "critical,CA:FALSE"},
                          {NID_key_usage, "critical,digitalSignature,keyEncipherment"},
                          {NID_ext_key_usage, "serverAuth"},
                          {NID_subject_alt_name, what.alternativeNames},
                          {NID_subject_key_identifier, "hash"},
                          {NID_authority_key_identifier, "keyid"}}},
                        &authority);
}

void WriteIdentity(const std::filesystem::path& folder, const std::string& name,
                   const Identity& identity) {
    const auto keyOut = OpenForWriting(folder / (name + "-key.pem"), 0600);
    const auto certificateOut = OpenForWriting(folder / (name + ".pem"), 0644);
    Check(PEM_write_bio_PrivateKey(keyOut.get(), identity.key.get(), nullptr, nullptr, 0, nullptr,
                                   nullptr) == 1 &&
              PEM_write_bio_X509(certificateOut.get(), identity.certificate.get()) == 1,
          "cannot write a certificate");
}

OpenSslPtr<SSL_CTX> MakeTlsContext(const Identity& server, const Identity& authority) {
    OpenSslPtr<SSL_CTX> context(SSL_CTX_new(TLS_server_method()));
    Check(context != nullptr, "cannot set up TLS");
    SSL_CTX_set_min_proto_version(context.get(), TLS1_2_VERSION);
    Check(SSL_CTX_use_certificate(context.get(), server.certificate.get()) == 1 &&
              SSL_CTX_use_PrivateKey(context.get(), server.key.get()) == 1 &&
              SSL_CTX_add1_chain_cert(context.get(), authority.certificate.get()) == 1,
          "cannot use a certificate");
    return context;
}

} // namespace devservice
