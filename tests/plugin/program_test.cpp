// The stand-in host's program: what it says of a command line or files that will not do.
#include "host/kernel_handle.h"

#include "tests/plugin/panel_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fstream>

namespace brimwave::testing {
namespace {

using ::testing::HasSubstr;

struct Outcome {
    DWORD status = ~0u;
    std::string output; // standard output and error
};

std::wstring Quoted(const std::wstring& argument) {
    return L"\"" + argument + L"\"";
}

/// Runs the program beside the plug-in and waits for its end.
Outcome RunHost(const std::vector<std::wstring>& arguments) {
    std::wstring command =
        Quoted((std::filesystem::path(PluginPath()).parent_path() / L"simhost.exe").wstring());
    for (const std::wstring& argument : arguments)
        command += L" " + Quoted(argument);

    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    HANDLE read = nullptr;
    HANDLE write = nullptr;
    CreatePipe(&read, &write, &inherit, 0);
    const KernelHandle reader(read);
    KernelHandle writer(write);
    SetHandleInformation(read, HANDLE_FLAG_INHERIT, 0);

    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = write;
    PROCESS_INFORMATION process{};
    Outcome outcome;
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &start, &process))
        return outcome;
    const KernelHandle handle(process.hProcess);
    const KernelHandle thread(process.hThread);
    writer.reset();
    std::array<char, 4096> buffer{};
    for (DWORD count = 0; ReadFile(read, buffer.data(), 4096, &count, nullptr) && count > 0;)
        outcome.output.append(buffer.data(), count);
    WaitForSingleObject(handle.get(), INFINITE);
    GetExitCodeProcess(handle.get(), &outcome.status);
    return outcome;
}

TEST(HostProgramTest, SaysInOneLineWhatIsWrong) {
    const ScratchFolder folder;
    const std::wstring scene = folder.File(L"scene.json");
    std::ofstream(std::filesystem::path(scene))
        << R"({"format": "simhost-scene", "version": 1, "nodes": [{"name": 7}]})";
    const std::wstring core =
        (std::filesystem::path(PluginPath()).parent_path() / L"libsimhost_core.dll").wstring();
    const struct {
        std::vector<std::wstring> arguments;
        std::string message; // a part of it
    } rows[] = {
        {{L"--colour"}, "unknown option \"--colour\""},
        {{L"--scene"}, "--scene needs a value"},
        {{L"--timeout", L"soon"}, "--timeout takes a number of seconds, not \"soon\""},
        {{L"--target", L"C"}, "--target takes A or B, not \"C\""},
        {{L"--bake", L"maybe"}, "--bake takes yes or no, not \"maybe\""},
        {{L"--scene", folder.File(L"none.json")}, "none.json"},
        {{L"--scene", scene}, "/nodes/0/name"},
        {{L"--plugin", folder.File(L"none.dlu")}, "plug-in library not loadable: "},
        {{L"--plugin", core}, "does not export LibDescription"},
        {{L"--trust-ca", folder.File(L"none.pem")}, "certificate file unreadable: "},
        {{L"--trust-ca", scene}, "no certificate in "},
    };
    for (const auto& row : rows) {
        const Outcome outcome = RunHost(row.arguments);
        EXPECT_EQ(outcome.status, 1u) << row.message;
        EXPECT_THAT(outcome.output, ::testing::StartsWith("error: ")) << row.message;
        EXPECT_THAT(outcome.output, HasSubstr(row.message));
        EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1)
            << outcome.output;
    }
}

TEST(HostProgramTest, GivesUpWhenTheTimeIsOver) {
    const ScratchFolder folder;
    const std::wstring summary = folder.File(L"summary.json");
    SetEnvironmentVariableW(L"BRIMWAVE_SERVICE_URL", L"https://127.0.0.1:1");
    const Outcome outcome = RunHost({L"--settings-dir", folder.Path().wstring(), L"--token", L"t",
                                     L"--export", L"--summary", summary, L"--timeout", L"0.001"});
    EXPECT_EQ(outcome.status, 1u);
    EXPECT_THAT(outcome.output, HasSubstr("error: timed out after"));
    EXPECT_TRUE(std::filesystem::exists(summary)) << "what was seen until then";
}

TEST(HostProgramTest, AnExportThatIsNotDoneIsAFailure) {
    const ScratchFolder folder;
    const std::wstring summary = folder.File(L"summary.json");
    SetEnvironmentVariableW(L"BRIMWAVE_SERVICE_URL", L"https://127.0.0.1:1");
    const Outcome outcome = RunHost({L"--settings-dir", folder.Path().wstring(), L"--token", L"t",
                                     L"--export", L"--summary", summary});
    EXPECT_EQ(outcome.status, 1u);
    EXPECT_THAT(outcome.output, HasSubstr("[Brimwave Platform] Cannot connect to server: / "));
    std::ifstream in{std::filesystem::path(summary)};
    const std::string text{std::istreambuf_iterator<char>(in), {}};
    EXPECT_THAT(text, HasSubstr("\"status_text\": \"Ready.\""));
    EXPECT_THAT(text, HasSubstr("\"caption\": \"Brimwave Platform\""));
}

TEST(HostProgramTest, HelpListsTheOptions) {
    const Outcome outcome = RunHost({L"--help"});
    EXPECT_EQ(outcome.status, 0u);
    for (const char* const option : {"--scene", "--plugin", "--token", "--export", "--timeout"})
        EXPECT_THAT(outcome.output, HasSubstr(option));
}

} // namespace
} // namespace brimwave::testing
