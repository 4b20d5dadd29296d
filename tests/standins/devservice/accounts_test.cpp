#include "devservice/accounts.h"
#include "devservice/json_fields.h"
#include "devservice/start_error.h"

#include "tests/standins/temp_folder.h"

#include <gmock/gmock.h>

namespace devservice {
namespace {

using standins::testing::TempFolder;
using ::testing::HasSubstr;

TEST(Accounts, AreReadFromTheFile) {
    const TempFolder folder;
    FaultBoard faults;
    AccountBook book;
    book.Load(folder.Write("a.json", R"([
        {"token": "a", "name": "first", "balance": 3, "daily_limit": 2},
        {"token": "b", "balance": -1, "daily_limit": 0, "faults": [{"status": 503, "times": 1}]},
        {"token": "c"}])"),
              faults);
    EXPECT_EQ(book.Size(), 3u);
    EXPECT_EQ(book.Find("a")->name, "first");
    EXPECT_EQ(book.Find("a")->ConversionsLeft(), 2);
    EXPECT_EQ(book.Find("b")->balance, -1);
    EXPECT_EQ(book.Find("b")->ConversionsLeft(), std::nullopt);
    EXPECT_EQ(book.Find("c")->dailyLimit, std::nullopt);
    EXPECT_FALSE(book.Find("d"));
    EXPECT_EQ(faults.Take("b", Fault::On::Jobs)->status, 503);
    EXPECT_FALSE(faults.Take("b", Fault::On::Jobs));
}

TEST(Accounts, ABadFileIsNamedWithWhatIsWrong) {
    const TempFolder folder;
    const std::pair<std::string, const char*> cases[] = {
        {"", "not valid JSON"},
        {"[{\"token\":", "not valid JSON"},
        {"{}", "array of accounts"},
        {"[1]", "must be an object"},
        {"[{}]", "needs a \"token\""},
        {"[{\"token\": 5}]", "\"token\" must be a text"},
        {"[{\"token\": \"a\", \"balance\": \"x\"}]", "\"balance\" must be an integer"},
        {"[{\"token\": \"a\", \"balance\": 3000000000}]", "\"balance\" must be an integer"},
        {"[{\"token\": \"a\", \"daily_limit\": -1}]", "\"daily_limit\" must be an integer"},
        {"[{\"token\": \"a\", \"dailylimit\": 1}]", "unknown member \"dailylimit\""},
        {"[{\"token\": \"a\"}, {\"token\": \"a\"}]", "share one token"},
        {"[{\"token\": \"a\", \"faults\": {}}]", "\"faults\" must be an array"},
        {"[{\"token\": \"a\", \"faults\": [{\"stauts\": 5}]}]", "unknown member \"stauts\""},
        {"[{\"token\": \"a\", \"faults\": [{\"on\": \"x\"}]}]", "\"on\" must be"},
        {"[{\"token\": \"a\", \"faults\": [{\"close\": \"x\"}]}]", "\"close\" must be"},
        {"[{\"token\": \"a\", \"faults\": [{\"body_hex\": \"0g\"}]}]", "hexadecimal"},
        {"[{\"token\": \"a\", \"faults\": [{\"body_hex\": \"0\"}]}]", "hexadecimal"},
        {"[{\"token\": \"a\", \"faults\": [{\"delay_ms\": -1}]}]", "\"delay_ms\" must be"},
    };
    for (const auto& [text, complaint] : cases) {
        FaultBoard faults;
        AccountBook book;
        try {
            book.Load(folder.Write("bad.json", text), faults);
            ADD_FAILURE() << "accepted: " << text;
        } catch (const StartError& error) {
            EXPECT_THAT(error.what(), HasSubstr("bad.json")) << text;
            EXPECT_THAT(error.what(), HasSubstr(complaint)) << text;
        }
    }
    FaultBoard faults;
    EXPECT_THROW(AccountBook().Load(folder.Path() / "none.json", faults), StartError);
}

TEST(Accounts, AJobCostsACreditAndAConversionOfTheDay) {
    std::int64_t day = 100;
    AccountBook book([&] { return day; });
    book.Put({.token = "a", .name = "", .balance = 3, .dailyLimit = 2});
    EXPECT_EQ(book.Charge("a"), ChargeResult::Charged);
    EXPECT_EQ(book.Charge("a"), ChargeResult::Charged);
    EXPECT_EQ(book.Find("a")->balance, 1);
    EXPECT_EQ(book.Charge("a"), ChargeResult::DailyLimitReached);
    book.Refund("a");
    EXPECT_EQ(book.Find("a")->balance, 2);
    EXPECT_EQ(book.Find("a")->ConversionsLeft(), 1);

    ++day; // the next day brings the conversions back, not the credits
    EXPECT_EQ(book.Find("a")->ConversionsLeft(), 2);
    EXPECT_EQ(book.Charge("a"), ChargeResult::Charged);
    EXPECT_EQ(book.Charge("a"), ChargeResult::Charged);
    EXPECT_EQ(book.Charge("a"), ChargeResult::NoCredit); // told first, as it does not heal
    EXPECT_EQ(book.Charge("b"), ChargeResult::UnknownToken);
}

TEST(Faults, TheFirstThatFitsIsTakenAndUsedUp) {
    FaultBoard board;
    board.Add("a", {.on = Fault::On::Jobs, .times = 2, .status = 1});
    board.Add("a", {.on = Fault::On::Any, .times = 1, .status = 2});
    board.Add("a", {.on = Fault::On::Balance, .times = {}, .status = 3});
    EXPECT_EQ(board.Take("a", Fault::On::Balance)->status, 2);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(board.Take("a", Fault::On::Balance)->status, 3);
    EXPECT_EQ(board.Take("a", Fault::On::Jobs)->status, 1);
    EXPECT_EQ(board.Take("a", Fault::On::Jobs)->status, 1);
    EXPECT_FALSE(board.Take("a", Fault::On::Jobs));
    EXPECT_FALSE(board.Take("b", Fault::On::Balance));
    board.Clear();
    EXPECT_FALSE(board.Take("a", Fault::On::Balance));
}

} // namespace
} // namespace devservice
