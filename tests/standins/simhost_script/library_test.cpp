// The functions of values: strings, arrays, points, files.
#include <cstdlib>

#include <gtest/gtest.h>

#include "tests/standins/simhost_script/script_kit.h"

namespace simhost::script {
namespace {

TEST(Strings, AreSearchedCutAndReplaced) {
    ExpectResults({
        {"substring \"hello\" 2 3", "\"ell\""},
        {"substring \"hello\" 4 99", "\"lo\""},
        {"substring \"hello\" 3 -1", "\"llo\""},
        {"substring \"hello\" 9 2", "\"\""},
        {"findString \"hello\" \"l\"", "3"},
        {"findString \"hello\" \"z\"", "undefined"},
        {"filterString \"a,b;;c\" \",;\"", "#(\"a\", \"b\", \"c\")"},
        {"filterString \"a,,b\" \",\" splitEmptyTokens:true", "#(\"a\", \"\", \"b\")"},
        {"substituteString \"aXbXc\" \"X\" \"--\"", "\"a--b--c\""},
        {"substituteString \"abc\" \"\" \"x\"", "\"abc\""},
        {"trimRight \"3253572981568P\" \"P\"", "\"3253572981568\""},
        {"trimLeft \"  x \"", "\"x \""},
        {"trimRight \"dir/\\\\\" \"\\\\/\"", "\"dir\""},
        {"toUpper \"abc\xC3\xA4\xD0\xB6\"", "\"ABC\xC3\x84\xD0\x96\""},
        {"\"abc\"[2]", "\"b\""},
        {"\"a\" == \"A\"", "false"},
        {"#a == #A", "true"},
        {"\"12\" as integer", "12"},
        {"\"12.7 cm\" as float", "12.7"},
        {"\" -12.7\" as integer", "-12"},
        {"\"1234P\" as integer64", "1234L"},
        {"\"x\" as integer", "undefined"},
    });
}

TEST(Strings, MatchPatterns) {
    ExpectResults({
        {"matchPattern \"Line001_bwSplineSrc\" pattern:\"*_BWSPLINESRC\"", "true"},
        {"matchPattern \"abc\" pattern:\"a?c\"", "true"},
        {"matchPattern \"abc\" pattern:\"A*\" ignoreCase:false", "false"},
        {"matchPattern \"abcbc\" pattern:\"a*bc\"", "true"},
        {"matchPattern \"\" pattern:\"*\"", "true"},
        {"matchPattern \"abc\" \"a*\"", "! Argument count error: matchPattern wanted 1, got 2"},
    });
}

TEST(Arrays, GrowAndShrink) {
    ExpectResults({
        {"a = #()\na[3] = 1\na", "#(undefined, undefined, 1)"},
        {"#(1, 2)[5]", "undefined"},
        {"append #(1) 2", "#(1, 2)"},
        {"a = #(1)\njoin a #(2, 3)\na", "#(1, 2, 3)"},
        {"a = #(1, 3)\ninsertItem 2 a 2\na", "#(1, 2, 3)"},
        {"a = #(1, 2, 3)\ndeleteItem a 2\na", "#(1, 3)"},
        {"findItem #(\"a\", \"b\") \"b\"", "2"},
        {"findItem #(1, 2) 5", "0"},
        {"a = #()\nappendIfUnique a 1\nappendIfUnique a 1\na.count", "1"},
        {"a = #(1)\nb = copy a #nomap\nappend b 2\na.count", "1"},
        {"#(1) == #(1)", "false"}, // by identity
        {"a = #(1)\na == a", "true"},
        {"append 5 1", "! No \"append\" function for 5"},
    });
}

TEST(Points, ShareTheirComponents) {
    ExpectResults({
        {"p = [1, 2, 3]\np.y = 9\np", "[1,9,3]"},
        {"p = [1, 2, 3]\nq = p\nq.x = 5\np.x", "5.0"},
        {"p = [1, 2]\nq = copy p\nq.x = 5\np", "[1,2]"},
        {"(color 255 128 0).g / 255.0", "0.501961"},
        {"#((color 1 2 3) == (color 1 2 3), [1, 2] == [1, 3])", "#(true, false)"},
        {"point3 1 2 3", "[1,2,3]"},
        {"[1, 2, 3].w", "! Unknown property: \"w\" in [1,2,3]"},
        {"[1, 2, 3] + [1, 2, 3]", "! No \"\"+\"\" function for [1,2,3]"},
    });
}

TEST(Classes, NameTheKindsOfValues) {
    ExpectResults({
        {"for v in #(1, 1.0, 1L, 1P, \"a\", #a, #(), [1,2], true, undefined) collect classOf v",
         "#(Integer, Float, Integer64, IntegerPtr, String, Name, Array, Point2, BooleanClass, "
         "UndefinedClass)"},
        {"superClassOf 1", "Number"},
        {"isKindOf 1 Number", "true"},
        {"isKindOf \"a\" Number", "false"},
        {"isProperty [1,2,3] #x", "true"},
        {"hasProperty [1,2,3] \"q\"", "false"},
        {"getProperty [1,2,3] #z", "3.0"},
        {"classOf (undefined as string)", "String"},
    });
}

TEST(Files, AreNamedListedAndRun) {
    const Folder folder;
    folder.Write("b.ms", "fromFile = 5");
    folder.Write("a.ms", "::setByFile = \"yes\"\nundefined.pos");
    folder.Write("sub/c.ms", "(");
    folder.Write("note.txt", "one\r\ntwo\n");
    const std::string dir = "dir = \"" + folder.Path() + "\\\\\"\n";
    const auto run = [&dir](const std::string& script) { return Result(dir + script); };
    const auto path = [&folder](const std::string& rest) {
        return "\"" + folder.Path() + rest + "\"";
    };
    EXPECT_EQ(run("doesFileExist (dir + \"b.ms\")"), "true");
    EXPECT_EQ(run("doesFileExist dir"), "true");
    EXPECT_EQ(run("doesFileExist dir allowDirectory:false"), "false");
    EXPECT_EQ(run("doesFileExist (dir + \"zzz\")"), "false");
    EXPECT_EQ(run("getFiles (dir + \"*.ms\")"),
              "#(" + path("\\a.ms") + ", " + path("\\b.ms") + ")");
    EXPECT_EQ(run("getDirectories (dir + \"*\")"), "#(" + path("\\sub\\") + ")");
    EXPECT_EQ(run("getFiles \"/no/such/folder/*\""), "#()");
    EXPECT_EQ(run("fileIn (dir + \"b.ms\")\nfromFile"), "5");
    EXPECT_EQ(run("(local fromFile = 1; fileIn (dir + \"b.ms\"); #(fromFile, ::fromFile))"),
              "#(1, 5)");
    EXPECT_EQ(
        run("r = try (fileIn (dir + \"a.ms\")) catch (getCurrentException())\n#(::setByFile, r)"),
        "#(\"yes\", \"-- Unknown property: \"pos\" in undefined\")");
    EXPECT_EQ(run("try (fileIn (dir + \"none.ms\"); 1) catch (2)"), "2");
    EXPECT_EQ(run("fileIn (dir + \"sub\\\\c.ms\")").substr(0, 14), "! Syntax error");
    EXPECT_EQ(run("f = createFile (dir + \"new.txt\")\nformat \"% of %\\n\" 1 \"\xC3\xA9\" to:f\n"
                  "print #a to:f\nclose f\nformat \"more\" to:f"),
              "! Runtime error: format on a closed file");
    EXPECT_EQ(ReadFile(folder.Path() + "/new.txt"), "1 of \xC3\xA9\n#a\n");
    EXPECT_EQ(run("createFile (dir + \"none/new.txt\")"), "undefined");
}

TEST(Services, AnswerTheEnvironment) {
    setenv("MXS_TEST_VALUE", "a\xC3\xA9", 1);
    ExpectResults({
        {"systemTools.getEnvVariable \"MXS_TEST_VALUE\"", "\"a\xC3\xA9\""},
        {"systemTools.getEnvVariable \"MXS_TEST_UNSET\"", "undefined"},
        {"systemTools.nothing", "! Unknown property: \"nothing\" in <Interface:systemTools>"},
    });
}

TEST(Output, GoesToTheListener) {
    Engine engine;
    engine.Run("print \"a\"\nformat \"%-%\\n\" 1 #b");
    EXPECT_EQ(engine.TakeOutput(), "\"a\"\n1-b\n");
    EXPECT_EQ(engine.Run("format \"% %\" 1"),
              "! Runtime error: format: too few arguments for the pattern");
}

} // namespace
} // namespace simhost::script
