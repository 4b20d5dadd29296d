// The functions of values: strings, arrays, points, files, streams.
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
        {"replace \"abcdef\" 2 3 \"-\"", "\"a-ef\""},
        {"trimRight \"3253572981568P\" \"P\"", "\"3253572981568\""},
        {"trimLeft \"  x \"", "\"x \""},
        {"trimRight \"dir/\\\\\" \"\\\\/\"", "\"dir\""},
        {"toUpper \"abc\xC3\xA4\xD0\xB6\"", "\"ABC\xC3\x84\xD0\x96\""},
        {"\"abc\"[2]", "\"b\""},
        {"\"a\" == \"A\"", "false"},
        {"#a == #A", "true"},
        {"stricmp \"a\" \"A\"", "0"},
        {"\"12\" as integer", "12"},
        {"\"12.7 cm\" as float", "12.7"},
        {"\"x\" as integer", "undefined"},
        {"formattedPrint 7 format:\"03d\"", "\"007\""},
        {"formattedPrint 3.14159 format:\"8.2f\"", "\"    3.14\""},
        {"formattedPrint 99P format:\"d\"", "\"99\""},
        {"formattedPrint 1 format:\"n\"", "! Runtime error: bad format: n"},
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

TEST(Arrays, GrowShrinkAndSort) {
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
        {"sort #(3, 1, 2)", "#(1, 2, 3)"},
        {"sort #(\"b\", \"a\")", "#(\"a\", \"b\")"},
        {"sort #(1, \"a\")", "! Unable to convert: 1 to type: String"},
        {"fn down a b = b - a\nqsort #(3, 1, 2) down", "#(3, 2, 1)"},
        {"makeUniqueArray #(1, 2, 1)", "#(1, 2)"},
        {"#(1) + #(2)", "#(1, 2)"},
        {"a = #(1)\nb = copy a #nomap\nappend b 2\na.count", "1"},
        {"#(1) == #(1)", "false"}, // by identity
        {"a = #(1)\na == a", "true"},
        {"a = #(1, 2, 3)\na.count = 1\na", "#(1)"},
        {"append 5 1", "! No \"append\" function for 5"},
        {"amin #(3, 1, 2) + amax 5 9", "10"},
        {"#{1..4} - #{2}", "#{1, 3..4}"},
        {"(#{1..3} as array)[2]", "2"},
        {"-#{1, 3}", "#{2}"},
    });
}

TEST(Points, ReckonAndShareTheirComponents) {
    ExpectResults({
        {"[1, 2, 3] * 2", "[2,4,6]"},
        {"[1, 2, 3] + [1, 1, 1]", "[2,3,4]"},
        {"p = [1, 2, 3]\np.y = 9\np", "[1,9,3]"},
        {"p = [1, 2, 3]\nq = p\nq.x = 5\np.x", "5.0"},
        {"(color 255 128 0).g / 255.0", "0.501961"},
        {"length [3, 4, 0]", "5.0"},
        {"cross [1, 0, 0] [0, 1, 0]", "[0,0,1]"},
        {"[1, 2, 3] * (transMatrix [10, 0, 0])", "[11,2,3]"},
        {"[1, 2, 3].w", "! Unknown property: \"w\" in [1,2,3]"},
        {"[1, 2, 3] as color", "(color 1 2 3)"},
        {"sin 30", "0.5"},
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
    EXPECT_EQ(run("(getFiles (dir + \"*.ms\") recurse:true).count"), "3");
    EXPECT_EQ(run("getDirectories (dir + \"*\")"), "#(" + path("\\sub\\") + ")");
    EXPECT_EQ(run("getFiles \"/no/such/folder/*\""), "#()");
    EXPECT_EQ(run("fileIn (dir + \"b.ms\")\nfromFile"), "5");
    EXPECT_EQ(run("(local fromFile = 1; fileIn (dir + \"b.ms\"); #(fromFile, ::fromFile))"),
              "#(1, 5)");
    EXPECT_EQ(
        run("r = try (fileIn (dir + \"a.ms\")) catch (getCurrentException())\n#(setByFile, r)"),
        "#(\"yes\", \"-- Unknown property: \"pos\" in undefined\")");
    EXPECT_EQ(run("try (fileIn (dir + \"none.ms\"); 1) catch (2)"), "2");
    EXPECT_EQ(run("fileIn (dir + \"sub\\\\c.ms\")").substr(0, 14), "! Syntax error");
    EXPECT_EQ(run("f = openFile (dir + \"note.txt\")\nfor i = 1 to 2 collect readLine f"),
              "#(\"one\", \"two\")");
    EXPECT_EQ(run("f = createFile (dir + \"new.txt\")\nformat \"% of %\\n\" 1 2 to:f\nclose f\n"
                  "readLine (openFile (dir + \"new.txt\"))"),
              "\"1 of 2\"");
    ExpectResults({
        {R"(getFilenamePath "C:\\dir\\file.ext")", R"("C:\dir\")"},
        {R"(getFilenameFile "C:\\dir\\file.v2.ext")", "\"file.v2\""},
        {R"(getFilenameType "C:\\dir.x\\file")", "\"\""},
        {R"(filenameFromPath "C:\\dir\\file.ext")", "\"file.ext\""},
    });
}

TEST(Services, AnswerEnvironmentAndVersion) {
    setenv("MXS_TEST_VALUE", "a\xC3\xA9", 1);
    ExpectResults({
        {"systemTools.getEnvVariable \"MXS_TEST_VALUE\"", "\"a\xC3\xA9\""},
        {"systemTools.getEnvVariable \"MXS_TEST_UNSET\"", "undefined"},
        {"systemTools.nothing", "! Unknown property: \"nothing\" in <Interface:systemTools>"},
        {"(maxVersion())[1] / 1000 - 2 + 2000 == (maxVersion())[8]", "true"},
    });
}

TEST(Output, GoesToTheListenerOrAStream) {
    Engine engine;
    engine.Run("print \"a\"\nformat \"%-%\\n\" 1 #b");
    EXPECT_EQ(engine.TakeOutput(), "\"a\"\n1-b\n");
    EXPECT_EQ(
        engine.Run("s = stringStream \"\"\nformat \"% \" 1 to:s\nformat \"%\" 2 to:s\ns as string"),
        "\"1 2\"");
    EXPECT_EQ(engine.TakeOutput(), "");
}

} // namespace
} // namespace simhost::script
