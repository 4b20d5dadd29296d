// What is a script and what is none.
#include <gtest/gtest.h>

#include "simhost/script/source.h"
#include "tests/standins/simhost_script/script_kit.h"
#include "tests/support/places.h"

namespace simhost::script {
namespace {

TEST(Syntax, TakesEveryConstruct) {
    EXPECT_EQ(Verdict(ReadFile(brimwave::testing::SourcePath("fuzz/seeds/fuzz_script_check/tour"))),
              "ACCEPT");
}

TEST(Syntax, RefusesBrokenScriptsWhereTheyBreak) {
    const Row rows[] = {
        {"(a", "1:3 Syntax error: at end of script, expected <factor>"},
        {"a = (1 + 2", "1:11 Syntax error: at end of script, expected <factor>"},
        {"a)", "1:2 Syntax error: at ), expected <factor>"},
        {"if a then", "1:10 Syntax error: at end of script, expected <factor>"},
        {"if a b", "1:7 Syntax error: at end of script, expected then or do"},
        {"if a then b\n+ c", "2:1 Syntax error: at +, expected <factor>"},
        {"a = 1\n* 2 * 3", "2:1 Syntax error: at *, expected <factor>"},
        {"(x = try(a) catch )", "1:19 Syntax error: at ), expected <factor>"},
        {"else b", "1:1 Syntax error: at else, expected <factor>"},
        {"for i = 1 to do print i", "1:24 Syntax error: at end of script, expected while"},
        {"for i = 1 to 3 print i", "1:23 Syntax error: at end of script, expected do or collect"},
        {"for = 1 to 3 do ()", "1:5 Syntax error: at =, expected <name>"},
        {"fn f a b (a)", "1:10 Syntax error: at (, expected parameter name or ="},
        {"fn = 3", "1:4 Syntax error: at =, expected function name"},
        {"struct s (a, b,)", "1:16 Syntax error: at ), expected struct member"},
        {"#(1, 2,)", "1:8 Syntax error: at ), expected <factor>"},
        {"#(1, 2", "1:7 Syntax error: at end of script, expected , or )"},
        {"[1]", "1:1 Syntax error: a point has two to four components"},
        {"[1,2,3,4,5]", "1:1 Syntax error: a point has two to four components"},
        {"a[1", "1:4 Syntax error: at end of script, expected ]"},
        {"a.", "1:3 Syntax error: at end of script, expected <name>"},
        {"a ==", "1:5 Syntax error: at end of script, expected <factor>"},
        {"3 = a", "1:3 Syntax error: at =, expected end of expression"},
        {"f x = 3", "1:5 Syntax error: at =, expected end of expression"},
        {"case a (1: 2)", "1:10 Syntax error: at :, expected end of expression"},
        {"case a of (1 2)", "1:14 Syntax error: at 2, expected :"},
        {"try (1)", "1:8 Syntax error: at end of script, expected catch"},
        {"while true print 1", "1:19 Syntax error: at end of script, expected do"},
        {"x = \"abc", "1:5 Syntax error: string without end"},
        {"x = \"dir\\\"", "1:5 Syntax error: string without end"},
        {"x = 'abc", "1:5 Syntax error: quoted name without end"},
        {"/* abc", "1:1 Syntax error: comment without end"},
        {"a = 3abc", "1:5 Syntax error: malformed number"},
        {"a ! b", "1:3 Syntax error: unknown character"},
        {"a = 1 % 2", "1:7 Syntax error: unknown character"},
        {"a = 1 b = 2", "1:9 Syntax error: at =, expected end of expression"},
        {"(a) (b)\n(a) if b then c", "2:5 Syntax error: at if, expected end of expression"},
        {"local", "1:6 Syntax error: at end of script, expected <name>"},
        {"global a = 1 b = 2", "1:16 Syntax error: at =, expected end of expression"},
        {"a = )", "1:5 Syntax error: at ), expected <factor>"},
        {"try(a)catch()try(b)catch()", "1:14 Syntax error: at try, expected end of expression"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Verdict(row.script), row.result) << "script: " << row.script;
}

TEST(Syntax, RefusesByNameWhatThisEngineDoesNotHave) {
    const std::string unknown = "1:1 Compile error: unknown name: ";
    for (const std::string name : {"rollout", "utility",      "macroScript", "plugin",
                                   "rcMenu",  "tool",         "attributes",  "animate",
                                   "at",      "about",        "coordsys",    "when",
                                   "max",     "mapped",       "persistent",  "printAllElements",
                                   "execute", "stringStream", "sort",        "matrix3",
                                   "polyop",  "messageBox"})
        EXPECT_EQ(Verdict(name + " a \"b\" (c)"), unknown + name);
    const Row rows[] = {
        {"with redraw off (a)", "1:6 Syntax error: the context is not supported: with redraw"},
        {"with quiet on (a)", "1:6 Syntax error: the context is not supported: with quiet"},
        {"in coordsys world a", "1:1 Syntax error: at in, expected <factor>"},
        {"a = #{1..3}", "1:5 Syntax error: bit arrays are not supported"},
        {"if (a && b) then c", "1:7 Syntax error: references are not supported"},
        {"fn f &p = 1", "1:6 Syntax error: references are not supported"},
        {"a = 10f", "1:5 Syntax error: malformed number"},
        {"a = 1.5d0", "1:5 Syntax error: malformed number"},
        {"a = ~TITLE~", "1:5 Syntax error: resource names are not supported"},
        {"a = ?", "1:5 Syntax error: the Listener's last result is not supported"},
        {"a = $.name", "1:5 Syntax error: the selection as $ is not supported"},
        {"struct s (on create do a)", "1:11 Syntax error: at on, expected struct member"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Verdict(row.script), row.result) << "script: " << row.script;
}

TEST(Syntax, GivesTheLineAndColumnOfLateFaults) {
    EXPECT_EQ(Verdict("a = 1\r\n\r\n-- remark\r\n  b = )\r\n").substr(0, 3), "4:7");
    EXPECT_EQ(Verdict("a = \"two\nlines\"\nb = /* x\n */ )").substr(0, 3), "4:5");
    EXPECT_EQ(Verdict("a = \\\n  )").substr(0, 3), "2:3");
}

TEST(Scopes, AreCheckedBeforeAnythingRuns) {
    const std::string outer = "Compile error: No outer local variable references permitted here: ";
    const Row rows[] = {
        {"local x = 1", "1:7 Compile error: no local declarations at top level"},
        {"if true then local x", "1:20 Compile error: no local declarations at top level"},
        {"fn a p = (fn b = p)", "1:18 "},
        {"fn a = (local v; fn b = (v = 1))", "1:26 "},
        {"fn a = (for v = 1 to 3 do (fn b = v))", "1:35 "},
        {"fn a p = (struct s (m = p))", "1:25 "},
        {"fn a = (v = 1; fn b = v)", "1:23 "},
        {"fn a = (fn p = 1; fn c = p())", "1:26 "},
        {"fn a p = (struct s (fn m = p))", "1:28 "},
        {"x = neverSet", "1:5 Compile error: unknown name: neverSet"},
        {"(if x do (y = 1); y)", "1:19 Compile error: unknown name: y"},
        {"try (1) catch (throw \"x\")",
         "1:16 Compile error: only throws without arguments are permitted in catch expressions"},
    };
    for (const Row& row : rows) {
        const std::string verdict = Verdict(row.script);
        EXPECT_EQ(verdict.find(row.result), 0u) << row.script << ": " << verdict;
        if (std::string_view(row.result).ends_with(' ')) {
            EXPECT_NE(verdict.find(outer), std::string::npos) << row.script << ": " << verdict;
        }
    }
}

TEST(Scopes, AllowWhatTheLanguageAllows) {
    for (const char* script : {
             "(local v = 1; fn a = (fn b = v; b()); a())", // of the top-level block
             "fn a p = (fn b p = p; b p)",                 // a parameter of its own
             "fn a = (local v; fn b = (local v = 2; v))",
             "fn a = (for i = 1 to 3 do (); fn b = (for i = 1 to 3 do i))",
             "struct s (v, fn m = (fn n = v; n()))", // members are reached through the instance
             "fn a = (global g; fn b = g)",
             "fn a = (::g = 1; fn b = ::g)",
             "for i = 1 to 3 do local x = i",
             "try (1) catch (try (throw \"x\") catch ())",
             "try (1) catch (fn f = throw \"x\")",
             "try (1) catch (throw())",
             "fn a = (fn b n = b (n - 1); b 1)",
             "struct s (fn m = later, later)",
             "(x = 1; fn a = (x = 2; x))",
         })
        EXPECT_EQ(Verdict(script), "ACCEPT") << script;
}

TEST(Source, ReadsEveryEncoding) {
    const std::wstring expected = L"s = \"\x00E9\x0416\"";
    const auto utf16 = [&expected](bool big) {
        std::string bytes;
        for (const wchar_t unit : expected) {
            const char low = static_cast<char>(unit & 0xFF);
            const char high = static_cast<char>(unit >> 8);
            bytes += big ? std::string{high, low} : std::string{low, high};
        }
        return bytes;
    };
    EXPECT_EQ(DecodeSource("\xEF\xBB\xBFs = \"\xC3\xA9\xD0\x96\""), expected);
    EXPECT_EQ(DecodeSource("s = \"\xC3\xA9\xD0\x96\""), expected);
    EXPECT_EQ(DecodeSource("\xFF\xFE" + utf16(false)), expected);
    EXPECT_EQ(DecodeSource("\xFE\xFF" + utf16(true)), expected);
    // Not valid UTF-8: Windows-1252.
    EXPECT_EQ(DecodeSource("\xE9 \x80\x93"), L"\x00E9 \x20AC\x201C");
    // Astral characters become pairs of units.
    EXPECT_EQ(DecodeSource("\xF0\x9F\x98\x80"), std::wstring({0xD83D, 0xDE00}));
    EXPECT_EQ(DecodeSource(""), L"");
}

// Runs the program on files and returns what it printed and its exit code.
std::pair<std::string, int> Check(const std::string& arguments) {
    const std::string command =
        brimwave::testing::ProgramPath("mxscheck") + " " + arguments + " 2>/dev/null";
    FILE* pipe = popen(command.c_str(), "r");
    std::string output;
    char buffer[512];
    while (pipe && fgets(buffer, sizeof(buffer), pipe))
        output += buffer;
    const int status = pipe ? pclose(pipe) : -1;
    return {output, WEXITSTATUS(status)};
}

TEST(Mxscheck, PrintsOneLineForEachFile) {
    const Folder folder;
    const std::string good = folder.Write("good.ms", "a = 1\n");
    const std::string bad = folder.Write("bad.ms", "a = 1\nb = (\"x\n");
    const std::string wide = folder.Write("wide.ms", std::string("\xFF\xFE"
                                                                 "a\0=\0)\0",
                                                                 8));
    EXPECT_EQ(Check(good), std::pair(std::string("ACCEPT\n"), 0));
    EXPECT_EQ(Check(good + " " + bad + " " + wide),
              std::pair(std::string("ACCEPT\n"
                                    "REJECT 2:6 Syntax error: string without end\n"
                                    "REJECT 1:3 Syntax error: at ), expected <factor>\n"),
                        1));
    // The host's names are known, those of other files are not.
    const std::string host = folder.Write("host.ms", "b = objects.count\nmessageBox \"b\"\n");
    EXPECT_EQ(Check(host).first, "REJECT 2:1 Compile error: unknown name: messageBox\n");
    EXPECT_EQ(Check("--names " + good).first, good + ": ACCEPT\n");
    EXPECT_EQ(Check(folder.Path() + "/none.ms").first, "REJECT 0:0 cannot read the file\n");
    EXPECT_EQ(Check("").second, 2);
}

} // namespace
} // namespace simhost::script
