// mxscheck FILE...: says of each script whether the host would compile it.
//
// Prints one line a file, in the order of the arguments: "ACCEPT", or "REJECT line:column
// message". With --names, the file's name stands before it. Exit code: 0 when all were accepted,
// 1 when one was not, 2 when there is nothing to check.
#include <iostream>
#include <string>
#include <string_view>

#include "simhost/bindings/bindings.h"
#include "simhost/script/interpreter.h"
#include "simhost/script/source.h"
#include "text/utf8.h"

using namespace simhost::script;

namespace {

// A message stays on its line, whatever the script holds.
std::string OneLine(std::string text) {
    for (char& c : text)
        c = static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    return text;
}

bool CheckFile(const std::string& name) {
    const auto bytes = FindSource(utf8::ToWide(name));
    if (!bytes) {
        std::cout << "REJECT 0:0 cannot read the file\n";
        return false;
    }
    Interpreter host; // of its own: no file sees the variables of another
    RegisterHost(host);
    const auto fault = host.Check(DecodeSource(*bytes));
    if (!fault) {
        std::cout << "ACCEPT\n";
        return true;
    }
    std::cout << "REJECT " << fault->Where().line << ':' << fault->Where().column << ' '
              << OneLine(utf8::FromWide(fault->Message())) << '\n';
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
