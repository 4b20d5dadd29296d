#pragma once
#include "devservice/http_front.h"
#include "devservice/options.h"
#include "devservice/service.h"

#include <nlohmann/json.hpp>

#include <memory>
#include <vector>

namespace devservice {

/// All open ports of one service.
class Ports {
  public:
    /// Opens HTTP and HTTPS as the options say, and with `tlsFaults` the faulty ones. Makes or
    /// reads the certificates. Throws StartError.
    Ports(Service& service, const Options& options);

    /// {"http": port, "https": port, "ca": path, "jobs": folder, "pid": ...}, and with faulty
    /// ports "tls_faults": {"wrong_name", "unknown_authority", "expired", "plain"}.
    [[nodiscard]] const nlohmann::ordered_json& Description() const { return description_; }

  private:
    int Open(OpenSslPtr<SSL_CTX> tls, std::uint16_t port, std::size_t threads);
    void OpenFaulty(const Identity& authority);

    Service& service_;
    std::vector<std::unique_ptr<HttpFront>> fronts_;
    nlohmann::ordered_json description_;
};

} // namespace devservice
