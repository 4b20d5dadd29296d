// What scripts mean: operators, constructs, variables, functions, structs.
#include <gtest/gtest.h>

#include "tests/standins/simhost_script/script_kit.h"

namespace simhost::script {
namespace {

TEST(Language, GroupsOperatorsByPrecedence) {
    ExpectResults({
        {"1 + 2 * 3", "7"},
        {"2 * 3 ^ 2", "18"},
        {"2 ^ 3 ^ 2", "512"},
        {"10 - 4 - 3", "3"},
        {"-2 ^ 2", "4"},
        {"abs -3 + 1", "4"},
        {"(abs -3) * 2", "6"},
        {"\"a\" + 2 as string", "\"a2\""},
        {"128 as float / 255.0", "0.501961"},
        {"classOf 1 as string", "\"Integer\""},
        {"1 + 1 == 2 and 3 > 2", "true"},
        {"true or undefined.x", "true"},
        {"false and undefined.x", "false"},
        {"not 1 == 2", "true"},
        {"not (true and false)", "true"},
        {"x = y = 3\nx + y", "6"},
    });
}

TEST(Language, TellsMinusFromANewOperand) {
    ExpectResults({
        {"n = 5\nn - 1", "4"},
        {"n = 5\nn-1", "4"},
        {"n = 5\nn -1", "! Type error: Call needs function or class, got: 5"},
        {"fn f a b = a * b\nf 3 -1", "-3"},
        {"fn f a = a\nf 3 - 1", "2"},
        {"-(1 + 2)", "-3"},
    });
}

TEST(Language, EndsExpressionsAtLineBreaks) {
    ExpectResults({
        {"1 +\n2", "3"},
        {"fn f = 7\nx = f\n()\nclassOf x", "MAXScriptFunction"}, // no call over the line break
        {"(1; 2;; 3\n\n)", "3"},
        {"fn f a b = a + b\nf 1 \\ -- goes on\n 2", "3"},
        {"if false\nthen 1\nelse 2", "2"},
        {"(if true then 1\nelse 2)", "1"},
        {"a = #(\n1\n,2,\n3\n)\na.count", "3"},
        {"x = 1 -- remark\n/* more\n remarks */ x + 1", "2"},
        {"fn f p = p\nf[1,2]", "[1,2]"},
        {"for i\nin #(1, 2)\nwhere i > 1\ncollect\n(\ni\n)", "#(2)"},
        {"(local a = 1\nif a == 1 -- remark\nthen 2\nelse -- remark\n3)", "2"},
        {"fn early x = (\nif x do (return)\n1)\n#(early false, early true)", "#(1, undefined)"},
        {"a = #(7, 8)\na [2]", "8"},
    });
}

TEST(Language, NumbersKeepTheirKind) {
    ExpectResults({
        {"5 / 2", "2"},
        {"5 / 2.0", "2.5"},
        {"-7 / 2", "-3"},
        {"3 as float", "3.0"},
        {"2.9 as integer", "2"},
        {"2147483647 + 1", "-2147483648"},
        {"4679864L", "4679864L"},
        {"1L + 2", "3L"},
        {"1P + 2L", "3P"},
        {"3000000000", "3000000000L"},
        {"0xff", "255"},
        {"0xFFFFFFFF", "-1"},
        {"1e3", "1000.0"},
        {"1.5E+1", "15.0"},
        {"0x10P", "16P"},
        {".5 + 1.", "1.5"},
        {"1 == 1.0", "true"},
        {"1 / 0", "! Runtime error: Divide by zero"},
        {"-2147483648 / -1", "-2147483648"},
        {"mod 7 3", "1.0"},
        {"mod -7.5 2", "-1.5"},
        {"abs -3L", "3L"},
        {"2 ^ 40", "0"},
        {"2L ^ 40", "1099511627776L"},
    });
}

TEST(Language, PrintsValuesAsTheHostDoes) {
    ExpectResults({
        {"2.2 as string", "\"2.2\""},
        {"1.0 as string", "\"1.0\""},
        {"100000.0 as string", "\"100000.0\""},
        {"(128/255.0) as string", "\"0.501961\""},
        {"0.0000114441 as string", "\"1.14441e-05\""},
        {"1e30 as string", "\"1e+30\""},
        {"1e-8 as string", "\"0.0\""},
        {"true as string", "\"true\""},
        {"undefined as string", "\"undefined\""},
        {"#gamma as string", "\"gamma\""},
        {"#(0, \"a\", #b, 1.5) as string", "\"#(0, \"a\", #b, 1.5)\""},
        {"[100, 0.0000114441, 141.421] as string", "\"[100,1.14441e-05,141.421]\""},
        {"[1, 2] as string", "\"[1,2]\""},
        {"(color 255 0 127.5) as string", "\"(color 255 0 127.5)\""},
        {"(for i = 1 to 22 collect i) as string",
         "\"#(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, ...)\""},
        {"123P as string", "\"123P\""},
    });
}

TEST(Language, StringsKeepBackslashesThatEscapeNothing) {
    ExpectResults({
        {R"("C:\Program" )", R"("C:\Program")"},
        {R"("C:\temp".count)", "6"},
        {R"(@"C:\temp\" )", R"("C:\temp\")"},
        {R"("a\"b\\c\%d\*")", R"("a"b\c%d*")"},
        {R"("\x41\x42")", "\"AB\""},
        {R"("\x" )", R"("\x")"},
        {"\"a\nb\".count", "3"},
    });
}

TEST(Language, ConstructsHaveValues) {
    ExpectResults({
        {"if false then 1", "undefined"},
        {"()", "undefined"},
        {"(1; \"last\")", "\"last\""},
        {"case 2 of (1: \"one\"\n 2: \"two\")", "\"two\""},
        {"case 5 of (1: \"one\" default: \"other\")", "\"other\""},
        {"case 5 of (1: \"one\")", "undefined"},
        {"case \"b\" of (\"a\": 1 \"b\": 2)", "2"},
        {"case of ((1 > 2): \"gt\"; default: \"le\")", "\"le\""},
        {"for i = 1 to 3 collect i * i", "#(1, 4, 9)"},
        {"for i = 3 to 1 by -1 collect i", "#(3, 2, 1)"},
        {"for i = 3 to 1 collect i", "#()"},
        {"for i = 1 to 2 by 0.5 collect i", "#(1.0, 1.5, 2.0)"},
        {"for x in #(5, 6, 7) where x != 6 collect x", "#(5, 7)"},
        {"for i = 1 to 10 while i < 4 collect i", "#(1, 2, 3)"},
        {"for v, i, k in #(9, 8, 7) where v != 8 collect #(v, i, k)", "#(#(9, 1, 1), #(7, 3, 2))"},
        {"for i = 1 to 4 collect (if i == 2 do continue; i)", "#(1, 3, 4)"},
        {"for i = 1 to 3 collect (if i == 2 then dontCollect else i)", "#(1, 3)"},
        {"for i = 1 to 9 do (if i == 4 do exit with i * 10)", "40"},
        {"for i = 1 to 9 collect (if i == 4 do exit; i)", "#(1, 2, 3)"},
        {"for i = 1 to 9 collect (if i == 4 do exit with 0; i)", "#(1, 2, 3)"},
        {"i = 0\nwhile i < 5 do i += 1\ni", "5"},
        {"i = 0\ndo i += 1 while i < 3\ni", "3"},
        {"(local n = 0; for i = 1 to 3 do for j = 1 to 9 do (if j > i do exit; n += 1); n)", "6"},
        {"for i in 5 do i", "! No \"map\" function for 5"},
        {"if 1 then 2", "! Unable to convert: 1 to type: Boolean"},
        {"undo off (5)", "5"},
        {"with undo \"label\" on (6)", "6"},
        {"undo 7 (8)", "! Unable to convert: 7 to type: Boolean"},
    });
}

TEST(Language, VariablesLiveInTheirScopes) {
    ExpectResults({
        {"(x = 1)\nx", "! Compile error: unknown name: x"}, // implicit local of the block
        {"global x\n(x = 1)\nx", "1"},                      // a known global
        {"(::x = 1)\nx", "1"},
        {"(global x = 4)\nx", "4"},
        {"x = 5\n(local x = 6; ::x)", "5"},
        {"(local x = 1; (x = 2); x)", "2"},
        {"(local x = 1; (local x = 2); x)", "1"},
        {"(for i = 1 to 3 collect (local y; old = y; y = i; old))",
         "#(undefined, undefined, undefined)"},
        {"for i = 1 to 2 collect (if i == 1 do y = i; z = 5; if i == 2 do z = 6; z)", "#(5, 6)"},
        {"if true then y = 3\ny", "3"}, // no bracket: still the top level
        {"neverSet", "! Compile error: unknown name: neverSet"},
        {"::neverSet", "undefined"},
        {"global neverSet\nneverSet", "undefined"},
        {"true = 5", "! Runtime error: Cannot assign to read-only variable: true"},
    });
}

TEST(Language, FunctionsTakePositionalAndKeywordParameters) {
    ExpectResults({
        {"fn f a b = a - b\nf 5 3", "2"},
        {"fn f a = a\nf 1 2", "! Argument count error: f wanted 1, got 2"},
        {"fn f a k:10 = a + k\n#(f 1, f 1 k:2)", "#(11, 3)"},
        {"fn f k: = k == unsupplied\nf()", "true"},
        {"fn f = 1\nf x:2", "! Runtime error: f got an unexpected keyword argument"},
        {"fn f a = append a 9\nb = #(1)\nf b\nb", "#(1, 9)"}, // arrays are shared
        {"fn f n = if n < 2 then 1 else n * f (n - 1)\nf 10", "3628800"},
        {"fn f x = (if x > 1 do return \"big\"; \"small\")\n#(f 1, f 2)", "#(\"small\", \"big\")"},
        {"fn f = (for i = 1 to 9 do for j = 1 to 9 do if i * j == 12 do return #(i, j))\nf()",
         "#(2, 6)"},
        {"fn f x = x * (if x > 1 then return 100 else 2)\n#(f 1, f 2)", "#(2, 100)"},
        {"(fn f = g(); fn g = 1; f())", "! Compile error: unknown name: g"},
        {"(local c = 0; fn inc = c += 1; inc(); inc(); c)", "2"},
        {"(local c = 0; global inc; fn inc = c += 1)\ninc()\ninc()", "2"}, // outlives its block
        {"(local c = 0; fn helper = c += 1; global inc; fn inc = helper())\ninc()\ninc()", "2"},
        {"(local c = 0; global list = #(); fn f = c; append list f)\nf = list[1]\nf()",
         "! Runtime error: the variables around the function are gone"},
        {"fn f a = a\nclassOf f", "MAXScriptFunction"},
        {"undefined 3", "! Type error: Call needs function or class, got: undefined"},
    });
}

TEST(Language, StructsHoldDataAndFunctions) {
    const std::string counter = "struct C (n = 1, step = n + 1,\n"
                                "fn add k = (n += k * step + last; n),\n"
                                "fn twice k = (add k; add k), last = 0)\n";
    EXPECT_EQ(Result(counter + "c = C()\nc.add 2\nc.n"), "5");
    EXPECT_EQ(Result(counter + "c = C()\nc.step = 10\nc.twice 1"), "21");
    EXPECT_EQ(Result(counter + "#((C()) == (C()), (C()).n)"), "#(false, 1)");
    EXPECT_EQ(Result("struct S (a, b = 2)\nS()"), "(S a:undefined b:2)");
    EXPECT_EQ(Result("struct S (a)\ns = S()\ns.zzz"),
              "! Unknown property: \"zzz\" in (S a:undefined)");
    EXPECT_EQ(Result("struct S (a = #())\ns = S()\nt = s\nappend t.a 1\ns.a"), "#(1)");
    EXPECT_EQ(Result("struct S (a)\nS a:5"),
              "! Runtime error: members of a new S can only be set behind its making");
    // The block around a struct stays as long as a global instance needs it.
    EXPECT_EQ(Result("(local k = 5; fn f = k; struct S (fn m = f()); ::s = S())\ns.m()"), "5");
}

TEST(Language, CatchGetsTheMessageAndKeepsWhatWasDone) {
    ExpectResults({
        {"try (throw \"boo\") catch (getCurrentException())", "\"-- Runtime error: boo\""},
        {"x = 1\ntry (x = 2; undefined.y) catch ()\nx", "2"},
        {"try (try (throw \"in\") catch (throw())) catch (getCurrentException())",
         "\"-- Runtime error: in\""},
        {"try (1) catch (2)", "1"},
        {"getCurrentException()", "! Runtime error: getCurrentException() outside of a catch"},
        {"for i = 1 to 3 do (try (if i == 2 do exit with i) catch ())", "2"},
        {"fn f = (try (return 5) catch (); 6)\nf()", "5"},
        {"fn f = (local x = (try (return 5) catch ()); 6)\nf()", "5"},
    });
}

TEST(Language, RaisesTheHostsMessages) {
    ExpectResults({
        {"undefined.count", "! Unknown property: \"count\" in undefined"},
        {"undefined + 1", "! No \"\"+\"\" function for undefined"},
        {"foo 1", "! Compile error: unknown name: foo"},
        {"::foo 1", "! Type error: Call needs function or class, got: undefined"},
        {"undefined as integer", "! Unable to convert: undefined to type: Integer"},
        {"#() as float", "! Unable to convert: #() to type: Float"},
        {"\"a\" + 1", "! Unable to convert: 1 to type: String"},
        {"1 + \"a\"", "! Unable to convert: \"a\" to type: Integer"},
        {"getProperty [1,2,3] \"x\"", "! No \"map\" function for undefined"},
        {"#(1)[0]", "! Array index must be positive number, got: 0"},
        {"1 < \"a\"", "! Unable to convert: \"a\" to type: Integer"},
        {"doesFileExist 5", "! Unable to convert: 5 to type: FileName"},
    });
}

TEST(Language, RunsExpressionByExpression) {
    Engine engine;
    EXPECT_EQ(engine.Run("a = 1\nb = )"), "! Syntax error: at ), expected <factor>");
    EXPECT_EQ(engine.Run("a"), "1");
    // One bracket around everything: a fault anywhere and nothing has run.
    EXPECT_EQ(engine.Run("(::a = 2\nb = )").substr(0, 1), "!");
    EXPECT_EQ(engine.Run("a"), "1");
}

} // namespace
} // namespace simhost::script
