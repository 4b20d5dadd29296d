#include "devservice/certificates.h"
#include "devservice/job_store.h"
#include "devservice/start_error.h"

#include "tests/standins/temp_folder.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace devservice {
namespace {

using standins::testing::ReadFile;
using standins::testing::TempFolder;
namespace fs = std::filesystem;
using ::testing::HasSubstr;

RequestHead SomeHead() {
    return ParseRequestHead("POST /node/api/v1/jobs?x=1 HTTP/1.1\r\nb-HEADER:  1\r\n"
                            "Authorization: Bearer t\r\nA: x:y \r\nb-header: \xFF\r\n\r\n",
                            true);
}

TEST(RequestHead, IsKeptAsItCame) {
    const RequestHead head = SomeHead();
    EXPECT_EQ(head.method, "POST");
    EXPECT_EQ(head.target, "/node/api/v1/jobs?x=1");
    EXPECT_EQ(head.headerLines, (std::vector<std::string>{"b-HEADER:  1", "Authorization: Bearer t",
                                                          "A: x:y ", "b-header: \xFF"}));
    EXPECT_EQ(head.Value("B-Header"), "1");
    EXPECT_EQ(head.Value("none"), "");
    EXPECT_EQ(head.BearerToken(), "t");
    EXPECT_EQ(
        ParseRequestHead("GET / HTTP/1.1\r\nAuthorization: Basic x\r\n\r\n", false).BearerToken(),
        "");
    for (const char* broken : {"", "\r\n\r\n", "GET", "GET\nno colon\n\n"})
        EXPECT_EQ(ParseRequestHead(broken, false).target, "") << broken;
}

TEST(JobStore, KeepsWholeJobsUnderTheNextNumber) {
    const TempFolder folder;
    fs::create_directories(folder.Path() / "0007");
    fs::create_directories(folder.Path() / ".incoming-3"); // of a service that was killed
    JobStore store(folder.Path());
    EXPECT_EQ(store.Count(), 1u);
    {
        IncomingJob dropped = store.Begin();
        ASSERT_TRUE(dropped.Append("gone"));
        IncomingJob job = store.Begin();
        ASSERT_TRUE(job.Append({"a\0\r\n", 4}));
        ASSERT_TRUE(job.Append("b"));
        EXPECT_EQ(store.Keep(job, SomeHead()), "0008");
    }
    EXPECT_EQ(ReadFile(folder.Path() / "0008" / "package.json"), std::string("a\0\r\nb", 5));
    const auto request =
        nlohmann::ordered_json::parse(ReadFile(folder.Path() / "0008" / "request.json"));
    EXPECT_EQ(request["path"], "/node/api/v1/jobs?x=1");
    EXPECT_EQ(request["body_bytes"], 5);
    EXPECT_EQ(request["headers"].begin().key(), "b-HEADER"); // order and spelling as sent
    EXPECT_EQ(request["headers"]["A"], "x:y ");
    EXPECT_EQ(request["header_lines"].size(), 4u);
    EXPECT_EQ(store.Count(), 2u);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 2);
}

TEST(JobStore, AFolderThatCannotBeUsedIsNamed) {
    const TempFolder folder;
    const fs::path file = folder.Write("file", "");
    try {
        const JobStore store(file);
        ADD_FAILURE() << "took a file for a folder";
    } catch (const StartError& error) {
        EXPECT_THAT(error.what(), HasSubstr(file.string()));
    }
}

TEST(Authority, IsMadeOnceAndKept) {
    const TempFolder folder;
    const fs::path state = folder.Path() / "new" / "state";
    (void)LoadOrMakeAuthority(state);
    const std::string first = ReadFile(state / "ca.pem");
    EXPECT_THAT(first, HasSubstr("BEGIN CERTIFICATE"));
    EXPECT_EQ(fs::status(state / "ca-key.pem").permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    (void)LoadOrMakeAuthority(state);
    EXPECT_EQ(ReadFile(state / "ca.pem"), first);
}

TEST(Authority, FilesThatDoNotFitAreRefused) {
    const TempFolder one;
    const TempFolder other;
    (void)LoadOrMakeAuthority(one.Path());
    (void)LoadOrMakeAuthority(other.Path());
    fs::copy_file(other.Path() / "ca-key.pem", one.Path() / "ca-key.pem",
                  fs::copy_options::overwrite_existing);
    EXPECT_THROW((void)LoadOrMakeAuthority(one.Path()), StartError);
    (void)one.Write("ca-key.pem", "no key");
    EXPECT_THROW((void)LoadOrMakeAuthority(one.Path()), StartError);
    fs::remove(other.Path() / "ca-key.pem"); // a certificate alone must not be replaced unasked
    EXPECT_THROW((void)LoadOrMakeAuthority(other.Path()), StartError);
}

} // namespace
} // namespace devservice
