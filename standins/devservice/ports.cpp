#include "devservice/ports.h"

#include <nlohmann/json.hpp>

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

Ports::Ports(Service& service, const Options& options)
    : service_(service), authority_(std::filesystem::absolute(options.state / "ca.pem")),
      jobs_(std::filesystem::absolute(options.jobs)) {
    const Identity authority = LoadOrMakeAuthority(options.state);
    // The server's own certificate is made anew at each start, so that it never runs out.
    const Identity server = MakeServer(authority, goodCertificate);
    WriteIdentity(options.state, "server", server);
    http_ = Open(nullptr, options.httpPort, threadsPerPort);
    https_ = Open(MakeTlsContext(server, authority), options.httpsPort, threadsPerPort);
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
        faulty_.emplace_back(name, Open(std::move(tls), 0, threadsPerFaultyPort));
    };
    ServerCertificate expired = goodCertificate;
    expired.validFromDays = -30;
    expired.validToDays = -1;
    open("wrong_name", TlsFor(authority, {.alternativeNames = "DNS:elsewhere.example"}));
    open("unknown_authority", TlsFor(MakeAuthority("Nobody's authority"), goodCertificate));
    open("expired", TlsFor(authority, expired));
    open("plain", nullptr); // for clients that are told it speaks TLS
}

nlohmann::ordered_json Ports::Describe() const {
    nlohmann::ordered_json ready{{"http", http_},
                                 {"https", https_},
                                 {"ca", authority_.string()},
                                 {"jobs", jobs_.string()},
                                 {"pid", ::getpid()}};
    for (const auto& [name, port] : faulty_)
        ready["tls_faults"][name] = port;
    return ready;
}

} // namespace devservice
