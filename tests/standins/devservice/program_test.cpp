// The program as a script sees it: started, asked, and ended.
#include "devservice/options.h"
#include "devservice/start_error.h"

#include "tests/standins/temp_folder.h"
#include "tests/support/places.h"

#include <gmock/gmock.h>
#include <httplib.h>
#include <nlohmann/json.hpp>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

namespace devservice {
namespace {

using standins::testing::ReadFile;
using standins::testing::TempFolder;
namespace fs = std::filesystem;
using namespace std::chrono_literals;
using nlohmann::json;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

constexpr const char* accountsText =
    R"([{"token": "secret-token", "name": "anna", "balance": 5, "daily_limit": 9},
        {"token": "slow-token", "balance": 5, "faults": [{"delay_ms": 60000}]}])";

// A running devservice. Ended with SIGTERM at the latest when it goes out of scope.
class Program {
  public:
    Program(const TempFolder& folder, std::vector<std::string> more) : log_(folder.Path() / "log") {
        const fs::path ready = folder.Path() / "ready.json";
        std::vector<std::string> words = {brimwave::testing::ProgramPath("devservice"),
                                          "--state",
                                          folder.Path() / "state",
                                          "--jobs",
                                          folder.Path() / "jobs",
                                          "--ready-file",
                                          ready};
        words.insert(words.end(), more.begin(), more.end());
        Start(words);
        for (int i = 0; i < 400 && !fs::exists(ready) && Running(); ++i)
            std::this_thread::sleep_for(25ms);
        if (fs::exists(ready))
            ready_ = json::parse(ReadFile(ready));
    }
    ~Program() { (void)End(); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Sends SIGTERM if it still runs; its exit status, or -1 when a signal ended it.
    int End() {
        if (process_ > 0 && Running()) {
            ::kill(process_, SIGTERM);
            ::waitpid(process_, &status_, 0);
            process_ = 0;
        }
        return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1;
    }

    const json& Ready() const { return ready_; }
    std::string Log() const { return ReadFile(log_); }

  private:
    void Start(const std::vector<std::string>& words) {
        std::vector<char*> arguments;
        for (const auto& word : words)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        process_ = ::fork();
        if (process_ == 0) {
            const int log = ::open(log_.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
            ::dup2(log, 1);
            ::dup2(log, 2);
            ::execv(arguments[0], arguments.data());
            ::_exit(127);
        }
    }
    bool Running() {
        if (process_ > 0 && ::waitpid(process_, &status_, WNOHANG) == process_)
            process_ = 0;
        return process_ > 0;
    }

    fs::path log_;
    pid_t process_ = 0;
    int status_ = 0;
    json ready_;
};

TEST(Program, ServesUntilItIsTerminated) {
    const TempFolder folder;
    Program program(folder, {"--accounts", folder.Write("accounts.json", accountsText)});
    ASSERT_FALSE(program.Ready().is_null()) << program.Log();
    httplib::Client client("127.0.0.1", program.Ready()["http"].get<int>());
    client.set_bearer_token_auth("secret-token");
    const auto balance = client.Get("/api/balance?key=secret-token");
    ASSERT_TRUE(balance);
    EXPECT_EQ(json::parse(balance->body),
              json::parse(R"({"balance": 5, "daily_limit": 9, "conversions_left": 9})"));
    const auto job = client.Post("/node/api/v1/jobs", "{}", "application/json");
    ASSERT_TRUE(job);
    EXPECT_EQ(job->status, 200);
    EXPECT_EQ(json::parse(client.Get("/health")->body)["jobs"], 1);
    EXPECT_EQ(client.Get("/nowhere")->status, 404);
    EXPECT_EQ(client.Post("/control/faults", "{\"token\": 1}", "application/json")->status, 400);

    EXPECT_EQ(program.End(), 0);
    EXPECT_FALSE(fs::exists(folder.Path() / "ready.json"));
    EXPECT_THAT(program.Log(), AllOf(HasSubstr("POST /node/api/v1/jobs 200 anna"),
                                     Not(HasSubstr("secret-token"))));
}

TEST(Program, EndsAtOnceInTheMiddleOfASlowAnswer) {
    const TempFolder folder;
    Program program(folder, {"--accounts", folder.Write("accounts.json", accountsText)});
    ASSERT_FALSE(program.Ready().is_null()) << program.Log();
    httplib::Client client("127.0.0.1", program.Ready()["http"].get<int>());
    client.set_bearer_token_auth("slow-token");
    std::thread waiting([&] { EXPECT_FALSE(client.Get("/api/balance")); });
    std::this_thread::sleep_for(200ms);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(program.End(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    waiting.join();
}

TEST(Program, SaysInOneLineWhyItCannotStart) {
    const TempFolder folder;
    const TempFolder other;
    const std::string accounts = folder.Write("accounts.json", accountsText);
    Program first(folder, {"--accounts", accounts});
    ASSERT_FALSE(first.Ready().is_null()) << first.Log();
    const std::string port = std::to_string(first.Ready()["https"].get<int>());
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"--accounts", accounts, "--https-port", port}, "port " + port},
        {{"--accounts", other.Path() / "none.json"}, "none.json"},
        {{"--accounts", accounts, "--jobs", accounts}, accounts},
        {{"--accounts", accounts, "--state", accounts}, accounts},
        {{"--accounts", accounts, "--frob"}, "--frob"},
    };
    for (const auto& [more, complaint] : cases) {
        Program program(other, more);
        EXPECT_TRUE(program.Ready().is_null()) << complaint;
        EXPECT_EQ(program.End(), 1) << complaint;
        EXPECT_THAT(program.Log(), AllOf(::testing::StartsWith("devservice: "),
                                         HasSubstr(complaint), ::testing::EndsWith("\n")));
        EXPECT_EQ(std::ranges::count(program.Log(), '\n'), 1) << program.Log();
    }
}

// Each faulty port fails for its own reason and for no other.
TEST(Program, CertificatesAreGoodOrBadAsNamed) {
    const TempFolder folder;
    Program program(folder,
                    {"--accounts", folder.Write("accounts.json", accountsText), "--tls-faults"});
    ASSERT_FALSE(program.Ready().is_null()) << program.Log();
    const auto verify = [&](int port) {
        httplib::SSLClient client("localhost", port);
        client.set_ca_cert_path(program.Ready()["ca"].get<std::string>().c_str());
        client.enable_server_certificate_verification(true);
        const auto answer = client.Get("/health");
        EXPECT_EQ(answer.error() == httplib::Error::Success,
                  client.get_openssl_verify_result() == X509_V_OK && answer);
        return std::pair(answer.error(), client.get_openssl_verify_result());
    };
    const json& faults = program.Ready()["tls_faults"];
    using httplib::Error;
    EXPECT_EQ(verify(program.Ready()["https"]), std::pair(Error::Success, long{X509_V_OK}));
    // The chain is good, so it is the name that the client refuses.
    EXPECT_EQ(verify(faults["wrong_name"]),
              std::pair(Error::SSLServerVerification, long{X509_V_OK}));
    EXPECT_EQ(verify(faults["expired"]).second, X509_V_ERR_CERT_HAS_EXPIRED);
    EXPECT_EQ(verify(faults["unknown_authority"]).second, X509_V_ERR_SELF_SIGNED_CERT_IN_CHAIN);
    EXPECT_EQ(verify(faults["plain"]).first, Error::SSLConnection);
}

TEST(Options, BadOnesAreNamed) {
    const std::pair<std::vector<std::string>, const char*> cases[] = {
        {{}, "--accounts is missing"},
        {{"--accounts", "a", "--state", "s"}, "--jobs is missing"},
        {{"--accounts"}, "--accounts needs a value"},
        {{"--http-port", "x"}, "'x' is no port"},
        {{"--http-port", "65536"}, "'65536' is no port"},
        {{"--http-port", "-1"}, "'-1' is no port"},
        {{"file"}, "unknown option 'file'"},
    };
    for (const auto& [arguments, complaint] : cases) {
        try {
            (void)ParseOptions(arguments);
            ADD_FAILURE() << "accepted; expected: " << complaint;
        } catch (const StartError& error) {
            EXPECT_THAT(error.what(), HasSubstr(complaint));
        }
    }
    EXPECT_TRUE(ParseOptions({"--help"}).help);
}

} // namespace
} // namespace devservice
