#include "devservice/ports.h"

#include <unistd.h>

namespace devservice {
namespace {

constexpr std::size_t threadsPerPort = 16;
constexpr std::size_t threadsPerFaultyPort = 4;

OpenSslPtr<SSL_CTX> TlsFor(const Identity& authority, const ServerCertificate& what) {
    return MakeTlsContext(MakeServer(authority, what), authority);
}

const ServerCertificate goodCertificate{.alternativeNames = "DNS:localhost,IP:127.0.0.1"};

} // namespace

Ports::Ports(Service& service, const Options& options) : service_(service) {
    const Identity authority = LoadOrMakeAuthority(options.state);
    // The server's own certificate is made anew at each start, so that it never runs out.
    const Identity server = MakeServer(authority, goodCertificate);
    WriteIdentity(options.state, "server", server);
    description_["http"] = Open(nullptr, options.httpPort, threadsPerPort);
    description_["https"] =
        Open(MakeTlsContext(server, authority), options.httpsPort, threadsPerPort);
    description_["ca"] = std::filesystem::absolute(options.state / "ca.pem").string();
    description_["jobs"] = std::filesystem::absolute(options.jobs).string();
    description_["pid"] = ::getpid();
    if (options.tlsFaults)
        OpenFaulty(authority);
}

int Ports::Open(OpenSslPtr<SSL_CTX> tls, std::uint16_t port, std::size_t threads) {
    auto front = std::make_unique<HttpFront>(
        [this](const RequestHead& head) { return service_.ChooseFault(head); }, std::move(tls),
        threads);
    service_.Attach(*front);
    const int taken = front->Start(port);
    fronts_.push_back(std::move(front));
    return taken;
}

void Ports::OpenFaulty(const Identity& authority) {
    const auto open = [&](const char* name, OpenSslPtr<SSL_CTX> tls) {
        description_["tls_faults"][name] = Open(std::move(tls), 0, threadsPerFaultyPort);
    };
    ServerCertificate expired = goodCertificate;
    expired.validFromDays = -30;
    expired.validToDays = -1;
    open("wrong_name", TlsFor(authority, {.alternativeNames = "DNS:elsewhere.example"}));
    open("unknown_authority", TlsFor(MakeAuthority("Nobody's authority"), goodCertificate));
    open("expired", TlsFor(authority, expired));
    open("plain", nullptr); // for clients that are told it speaks TLS
}

} // namespace devservice
