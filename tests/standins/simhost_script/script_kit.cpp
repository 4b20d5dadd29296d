#include "tests/standins/simhost_script/script_kit.h"

#include <unistd.h>

#include <atomic>
#include <fstream>

#include <gtest/gtest.h>

#include "simhost/script/convert.h"
#include "text/utf8.h"

namespace simhost::script {
namespace {

InterpreterOptions Listening(Limits limits, std::string& output) {
    InterpreterOptions options;
    options.limits = limits;
    options.listener = [&output](std::wstring_view text) { output += utf8::FromWide(text); };
    return options;
}

} // namespace

Engine::Engine(Limits limits) : interpreter_(Listening(limits, output_)) {}

std::string Engine::Run(std::string_view script) {
    try {
        return utf8::FromWide(QuotedText(interpreter_.Run(utf8::ToWide(script))));
    } catch (const ScriptError& error) {
        return "! " + utf8::FromWide(error.Message());
    }
}

std::string Result(std::string_view script) {
    return Engine().Run(script);
}

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.script;
}

void ExpectResults(std::initializer_list<Row> rows) {
    for (const Row& row : rows)
        EXPECT_EQ(Result(row.script), row.result) << "script: " << row.script;
}

std::string Verdict(std::string_view script) {
    Interpreter interpreter;
    for (const wchar_t name : std::wstring_view(L"abcdefghisx"))
        interpreter.Globals().Declare(std::wstring_view(&name, 1));
    const auto fault = interpreter.Check(utf8::ToWide(script));
    if (!fault)
        return "ACCEPT";
    return std::to_string(fault->Where().line) + ":" + std::to_string(fault->Where().column) + " " +
           utf8::FromWide(fault->Message());
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

Folder::Folder() {
    static std::atomic<int> count = 0;
    path_ = std::filesystem::temp_directory_path() /
            ("mxs_" + std::to_string(getpid()) + "_" + std::to_string(++count));
    std::filesystem::create_directories(path_);
}

Folder::~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string Folder::Write(const std::string& name, std::string_view bytes) const {
    const std::filesystem::path file = path_ / name;
    std::filesystem::create_directories(file.parent_path());
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file.string();
}

} // namespace simhost::script
