// No script may hang, crash or fill the host.
#include <gtest/gtest.h>

#include "simhost/script/heap.h"
#include "tests/standins/simhost_script/script_kit.h"

namespace simhost::script {
namespace {

std::string Repeat(std::string_view text, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += text;
    return all;
}

Limits Small() {
    Limits limits;
    limits.steps = 2'000'000;
    limits.liveBytes = size_t{64} << 20;
    return limits;
}

TEST(Limits, StopRunawayScripts) {
    const std::string tooLong = "! The script runs too long";
    for (const char* script : {"while true do ()", "for i = 1 to 2000000000 do ()",
                               "while true do try (while true do ()) catch ()",
                               "for i = 1 to 10 by 0 do ()", "for i = 1.0 to 1e30 do ()"})
        EXPECT_EQ(Engine(Small()).Run(script), tooLong) << script;
}

TEST(Limits, BoundMemory) {
    for (const char* script :
         {"s = \"abcd\"\nwhile true do s += s", "a = #(1)\nwhile true do join a a",
          "a = #()\na[100000000] = 1", "a = #()\nwhile true do append a (copy \"0123456789\")",
          "a = #(1)\ninsertItem 1 a 2000000000", "for i = 1 to 100000000 collect i",
          "s = \"aaaaaaaaaa\"\nwhile true do s = substituteString s \"a\" s"}) {
        const std::string result = Engine(Small()).Run(script);
        EXPECT_EQ(result[0], '!') << script << ": " << result;
    }
}

TEST(Limits, TurnDeepRecursionIntoAnError) {
    EXPECT_EQ(Result("fn f n = f (n + 1)\nf 1"), "! Runtime error: Stack overflow");
    EXPECT_EQ(Result("fn f n = f (n + 1)\ntry (f 1) catch (\"caught\")"), "\"caught\"");
    const Folder folder;
    const std::string itself = folder.Write("itself.ms", "fileIn ::itself");
    EXPECT_EQ(Result("::itself = \"" + itself + "\"\nfileIn ::itself"),
              "! Runtime error: Stack overflow");
    // As deep as searches through materials and groups go.
    EXPECT_EQ(Result("fn f n = if n == 0 then 0 else 1 + f (n - 1)\nf 150"), "150");
}

TEST(Limits, RefuseDeeplyNestedText) {
    const std::string tooDeep = "expressions are nested too deeply";
    for (const char* opening : {"(", "#(", "[", "- ", "not ", "if a then ", "x = ", "a[",
                                "fn f = ", "try ", "case a of (1: ", "2 ^ ", "undo off "}) {
        const std::string verdict = Verdict(Repeat(opening, 10'000));
        EXPECT_NE(verdict.find(tooDeep), std::string::npos) << opening << ": " << verdict;
    }
    EXPECT_EQ(Verdict(Repeat("(", 150) + "1" + Repeat(")", 150)), "ACCEPT");
    EXPECT_EQ(Verdict("x" + Repeat(".y", 10'000)).substr(0, 4), "1:40");
}

TEST(Limits, TakeLongFlatScripts) {
    EXPECT_EQ(Result("0" + Repeat(" + 1", 20'000)), "20000");
    EXPECT_EQ(Result("(" + Repeat("1;", 20'000) + "2)"), "2");
    std::string chain = "x = 7\n";
    for (int i = 0; i < 2'000; ++i) {
        chain += (i > 0 ? "else if x == " : "if x == ") + std::to_string(i) + " then " +
                 std::to_string(i * 2) + "\n";
    }
    EXPECT_EQ(Result(chain), "14");
    EXPECT_EQ(Result("#(" + Repeat("1,", 50'000) + "1)").substr(0, 6), "#(1, 1");
}

TEST(Limits, ReleaseWhatIsNoLongerReachable) {
    const size_t before = MemoryMeter::Live();
    {
        Engine engine;
        const size_t idle = MemoryMeter::Live();
        for (int i = 0; i < 50; ++i) {
            engine.Run("(local a = #(); struct S (x, fn f = a); local s = S(); s.x = a;\n"
                       "fn g = s; append a g; for j = 1 to 1000 do append a j)");
        }
        // Frames, functions and structs know each other; nothing of them stays.
        EXPECT_LT(MemoryMeter::Live(), idle + 10'000);
        engine.Run("kept = #(1, 2, 3)\nappend kept kept");
        Result("(local a = #(); append a a; 1)"); // another engine comes and goes
        EXPECT_EQ(engine.Run("kept.count"), "4");
    }
    EXPECT_EQ(MemoryMeter::Live(), before); // also of the list that holds itself
}

TEST(Limits, DestroyDeepValuesWithoutRecursion) {
    EXPECT_EQ(Result("(local a = #(); for i = 1 to 300000 do a = #(a); 1)"), "1");
    EXPECT_EQ(Result("global a = #()\nfor i = 1 to 100000 do a = #(a)\n(a as string).count > 20"),
              "true");
}

} // namespace
} // namespace simhost::script
