// sceneconv INPUT OUTPUT.json: a scene of any common format as a scene file of the stand-in host.
#include "sceneconv/guarded_run.h"
#include "sceneconv/write_scene.h"

#include <algorithm>
#include <iostream>
#include <new>

#include <unistd.h>

namespace {

constexpr int usageStatus = 2;

int ConvertAndReport(const std::filesystem::path& input, const std::filesystem::path& output) {
    sceneconv::Warnings warnings;
    try {
        const sceneconv::Summary made = sceneconv::Convert(input, output, warnings);
        for (const std::string& line : warnings.Lines())
            std::cerr << "sceneconv: warning: " << line << '\n';
        std::cout << output.string() << ": " << made.nodes << " nodes, " << made.objects
                  << " objects, " << made.materials << " materials, " << made.maps << " maps\n";
        return 0;
    } catch (const sceneconv::ConvertError& error) {
        std::cerr << "sceneconv: " << error.what() << '\n';
    } catch (const std::bad_alloc&) {
        std::cerr << "sceneconv: " << input.string()
                  << ": needs more memory than a file of its size should\n";
    } catch (const std::exception& error) {
        std::cerr << "sceneconv: " << input.string() << ": " << error.what() << '\n';
    }
    return 1;
}

/// More than real files take, but not all there is: a damaged file can make the library ask for
/// any amount.
std::uint64_t MemoryFor(const std::filesystem::path& input) {
    constexpr std::uint64_t least = std::uint64_t{4} << 30;
    constexpr std::uint64_t timesFile = 64;
    const auto pages = static_cast<std::uint64_t>(std::max(sysconf(_SC_PHYS_PAGES), 0L));
    const auto pageSize = static_cast<std::uint64_t>(std::max(sysconf(_SC_PAGESIZE), 0L));
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(input, error);
    return std::max(least, pages * pageSize / 2) + (error ? 0 : size * timesFile);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: sceneconv INPUT OUTPUT.json\n"
                     "INPUT: FBX, glTF, OBJ, Collada or any other format that the Open Asset "
                     "Import Library reads\n";
        return usageStatus;
    }
    const std::filesystem::path input = argv[1];
    const std::filesystem::path output = argv[2];
    return sceneconv::GuardedRun([&] { return ConvertAndReport(input, output); },
                                 "sceneconv: " + input.string() +
                                     ": the import library failed on this file, it is damaged\n",
                                 MemoryFor(input));
}
