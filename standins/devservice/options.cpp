#include "devservice/options.h"

#include "devservice/start_error.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

namespace devservice {
namespace {

std::uint16_t ParsePort(const std::string& option, const std::string& text) {
    std::uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size())
        throw StartError(option + ": '" + text + "' is no port number");
    return port;
}

} // namespace

Options ParseOptions(const std::vector<std::string>& arguments) {
    Options options;
    const std::pair<std::string_view, std::filesystem::path*> paths[] = {
        {"--accounts", &options.accounts},
        {"--state", &options.state},
        {"--jobs", &options.jobs},
        {"--ready-file", &options.readyFile}};
    for (auto it = arguments.begin(); it != arguments.end(); ++it) {
        const std::string& name = *it;
        const auto value = [&]() -> const std::string& {
            if (++it == arguments.end())
                throw StartError(name + " needs a value");
            return *it;
        };
        const auto* path = std::ranges::find(paths, name, [](const auto& p) { return p.first; });
        if (path != std::end(paths))
            *path->second = value();
        else if (name == "--http-port")
            options.httpPort = ParsePort(name, value());
        else if (name == "--https-port")
            options.httpsPort = ParsePort(name, value());
        else if (name == "--tls-faults")
            options.tlsFaults = true;
        else if (name == "--help" || name == "-h")
            options.help = true;
        else
            throw StartError("unknown option '" + name + "' (--help shows the options)");
    }
    for (const auto& [name, path] : paths) {
        if (!options.help && path->empty() && path != &options.readyFile)
            throw StartError(std::string(name) + " is missing (--help shows the options)");
    }
    return options;
}

} // namespace devservice
