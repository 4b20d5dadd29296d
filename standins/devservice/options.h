#pragma once
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace devservice {

struct Options {
    std::uint16_t httpPort = 0; ///< 0: any free port
    std::uint16_t httpsPort = 0;
    std::filesystem::path accounts;  ///< JSON file
    std::filesystem::path state;     ///< folder of the certificate authority
    std::filesystem::path jobs;      ///< folder of the accepted jobs
    std::filesystem::path readyFile; ///< empty: the ready line goes to standard output alone
    bool tlsFaults = false;          ///< also open the ports with faulty TLS
    bool help = false;
};

inline constexpr const char* usage =
    "devservice --accounts FILE --state DIR --jobs DIR [--http-port PORT]\n"
    "           [--https-port PORT] [--ready-file FILE] [--tls-faults]\n"
    "\n"
    "Serves the conversion protocol on 127.0.0.1 over HTTP and HTTPS until SIGTERM or SIGINT.\n"
    "  --accounts FILE    accounts to know: see docs/service-api.md\n"
    "  --state DIR        keeps the certificate authority (ca.pem), made at the first start\n"
    "  --jobs DIR         one folder per accepted job: 0001/package.json and request.json\n"
    "  --http-port PORT   0 or left out: any free one; --https-port alike\n"
    "  --ready-file FILE  written once the ports are open: {\"http\":..,\"https\":..,\"ca\":..}\n"
    "  --tls-faults       opens four more ports with faulty TLS, named in the ready file\n";

/// Reads the command line (without the program's name). Throws StartError.
[[nodiscard]] Options ParseOptions(const std::vector<std::string>& arguments);

} // namespace devservice
