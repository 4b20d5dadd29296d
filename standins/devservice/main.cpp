#include "devservice/options.h"
#include "devservice/ports.h"
#include "devservice/service.h"
#include "devservice/start_error.h"

#include <nlohmann/json.hpp>

#include <csignal>
#include <cstdio>
#include <fstream>

namespace {

using namespace devservice;

// Blocks the signals that end the service, in this and every later thread, so that one thread
// can wait for them.
sigset_t BlockEndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGHUP);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    return signals;
}

// A reader of the ready file never sees half of it.
void WriteReadyFile(const std::filesystem::path& path, const std::string& line) {
    const std::filesystem::path part = path.string() + ".part";
    std::ofstream out(part, std::ios::binary);
    out << line << '\n';
    out.close();
    std::error_code error;
    std::filesystem::rename(part, path, error);
    if (!out || error)
        throw StartError("cannot write the ready file " + path.string());
}

void Run(const Options& options) {
    const sigset_t signals = BlockEndSignals();
    Service service(options.accounts, options.jobs);
    const Ports ports(service, options);
    const std::string ready = ports.Description().dump();
    std::printf("%s\n", ready.c_str());
    std::fflush(stdout);
    if (!options.readyFile.empty())
        WriteReadyFile(options.readyFile, ready);
    int signal = 0;
    sigwait(&signals, &signal);
    std::error_code ignored;
    if (!options.readyFile.empty())
        std::filesystem::remove(options.readyFile, ignored);
}

} // namespace

int main(int argc, char** argv) {
    try {
        const Options options = ParseOptions({argv + 1, argv + argc});
        if (options.help)
            std::fputs(usage, stdout);
        else
            Run(options);
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "devservice: %s\n", error.what());
        return 1;
    }
}
