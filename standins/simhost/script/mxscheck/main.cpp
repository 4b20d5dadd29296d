// mxscheck FILE...: says of each script whether the host would compile it.
//
// Prints one line a file, in the order of the arguments: "ACCEPT", or "REJECT line:column
// message". With --names, the file's name stands before it. Exit code: 0 when all were accepted,
// 1 when one was not, 2 when there is nothing to check.
#include <iostream>
#include <string>
#include <string_view>

#include "simhost/script/check.h"
#include "simhost/script/source.h"
#include "simhost/script/text.h"

using namespace simhost::script;

namespace {

// A message stays on its line, whatever the script holds.
std::string OneLine(std::string text) {
    for (char& c : text)
        c = static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    return text;
}

bool CheckFile(const std::string& name) {
    constexpr size_t largestFile = size_t{64} << 20;
    const auto bytes = ReadWholeFile(FromUtf8(name), largestFile);
    if (!bytes) {
        std::cout << "REJECT 0:0 cannot read the file\n";
        return false;
    }
    const auto fault = CheckScript(DecodeSource(*bytes));
    // A file without a mark does not say what its bytes mean: any reading will do.
    const auto shape = fault ? DecodeTwoByteShape(*bytes) : std::nullopt;
    if (!fault || (shape && !CheckScript(*shape))) {
        std::cout << "ACCEPT\n";
        return true;
    }
    std::cout << "REJECT " << fault->Where().line << ':' << fault->Where().column << ' '
              << OneLine(ToUtf8(fault->Message())) << '\n';
    return false;
}

} // namespace

int main(int argc, char** argv) {
    bool names = false;
    bool allAccepted = true;
    int files = 0;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--names") {
            names = true;
            continue;
        }
        ++files;
        if (names)
            std::cout << argument << ": ";
        allAccepted = CheckFile(std::string(argument)) && allAccepted;
    }
    if (files == 0) {
        std::cerr << "usage: mxscheck [--names] FILE...\n";
        return 2;
    }
    return allAccepted ? 0 : 1;
}
