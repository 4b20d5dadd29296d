#include "devservice/options.h"

#include "devservice/start_error.h"

#include <charconv>

namespace devservice {
namespace {

std::uint16_t ParsePort(const std::string& option, const std::string& text) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size())
        throw StartError(option + ": '" + text + "' is no port number");
    return port;
}

void Require(const char* option, const std::filesystem::path& value) {
    if (value.empty())
        throw StartError(std::string(option) + " is missing (--help shows the options)");
}

} // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    for (auto it = arguments.begin(); it != arguments.end(); ++it) {
        const std::string& name = *it;
        const auto value = [&]() -> const std::string& {
            if (++it == arguments.end())
                throw StartError(name + " needs a value");
            return *it;
        };
        if (name == "--http-port")
            options.httpPort = ParsePort(name, value());
        else if (name == "--https-port")
            options.httpsPort = ParsePort(name, value());
        else if (name == "--accounts")
            options.accounts = value();
        else if (name == "--state")
            options.state = value();
        else if (name == "--jobs")
            options.jobs = value();
        else if (name == "--ready-file")
            options.readyFile = value();
        else if (name == "--tls-faults")
            options.tlsFaults = true;
        else if (name == "--help" || name == "-h")
            options.help = true;
        else
            throw StartError("unknown option '" + name + "' (--help shows the options)");
    }
    if (!options.help) {
        Require("--accounts", options.accounts);
        Require("--state", options.state);
        Require("--jobs", options.jobs);
    }
    return options;
}

} // namespace devservice
