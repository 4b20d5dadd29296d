// Every row of every table: class_rows.json says which members a class has, in which order.
#include "tests/package/package_kit.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace brimwave::testing {
namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream file(std::string(BRIMWAVE_SOURCE_DIR) + path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

const json& Tables() {
    static const json tables = json::parse(ReadFile("/tests/package/class_rows.json"))["tables"];
    return tables;
}

std::string OtherCase(std::string name) {
    for (char& c : name)
        c = static_cast<char>(std::isupper(static_cast<unsigned char>(c)) ? std::tolower(c)
                                                                          : std::toupper(c));
    return name;
}

/// A value of its own for each row, of a kind by turns.
struct RowValue {
    std::string type;
    json value;
    std::string text;
};

RowValue ValueOf(size_t row) {
    const std::string number = std::to_string(row + 1);
    switch (row % 6) {
    case 0:
        return {"pcnt_frac", static_cast<double>(row + 1) + 0.25, number + ".25"};
    case 1:
        return {"int", -static_cast<int>(row + 1), "-" + number};
    case 2:
        return {"bool", row % 4 == 2, row % 4 == 2 ? "true" : "false"};
    case 3:
        return {"frgba", {row + 1, 0.5, 0, 0.1}, "[" + number + ",0.5,0]"};
    case 4:
        return {"string", "text " + number, "\"text " + number + "\""};
    default:
        return {"point3", {row + 1, -1, 0.125}, "[" + number + ",-1,0.125]"};
    }
}

/// The class with all parameters of its rows, in reverse order, spelled in the other letter case
/// and spread over two blocks; a parameter that two rows name stands once.
json EntryWithRows(const std::string& className, const json& rows, bool floats) {
    json blocks = {{{"name", "one"}, {"params", json::array()}},
                   {{"name", "two"}, {"params", json::array()}}};
    for (size_t i = rows.size(); i-- > 0;) {
        const std::string name = OtherCase(rows[i][0]);
        RowValue value = ValueOf(i);
        if (floats)
            value = {"float", static_cast<double>(i) + 1.5, ""};
        blocks[i % 2]["params"].push_back(Param(name, value.type, value.value));
    }
    return {{"class", className}, {"replace_blocks", true}, {"blocks", blocks}};
}

TEST(ClassRows, EveryMaterialAndMapWritesItsRowsInOrder) {
    for (const json& table : Tables()) {
        if (table["kind"] == "light")
            continue;
        std::string expected;
        for (size_t i = 0; i < table["rows"].size(); ++i)
            expected += table["rows"][i][1].get<std::string>() + "=" + ValueOf(i).text + "\n";
        for (const json& className : table["classes"]) {
            json subject = EntryWithRows(className, table["rows"], false);
            subject["name"] = "subject";
            subject["sub_objects"] = json::object();
            json scene;
            if (table["kind"] == "material") {
                scene = SceneOf(subject);
            } else {
                scene = SceneOf({{"class", "Plain"},
                                 {"blocks", json::array()},
                                 {"slot_list", {{{"name", "Map"}, {"map", "subject"}}}}});
                scene["maps"] = {{"subject", subject}};
            }
            const Written written = WritePackage(scene);
            const std::string text = ToText(NodeMembers(written.text, "subject"));
            EXPECT_EQ(text.substr(0, expected.size()), expected) << className;
            // What may follow: a ramp's flags, a list of maps, an output.
            const std::string rest = text.substr(std::min(text.size(), expected.size()));
            const bool known = rest.empty() || rest.rfind("output_", 0) == 0 ||
                               rest.rfind("flags=", 0) == 0 || rest.rfind("textures=", 0) == 0;
            EXPECT_TRUE(known) << className << rest;
        }
    }
}

TEST(ClassRows, EveryLightWritesItsRowsInOrder) {
    json scene = EmptyScene();
    scene["units"] = {{"type", "centimeters"}};
    std::string expected;
    for (const json& table : Tables()) {
        if (table["kind"] != "light")
            continue;
        const std::string className = table["classes"][0];
        json light = EntryWithRows(className, table["rows"], true);
        if (className == "Free Light")
            light["blocks"][0]["params"].push_back(Param("webFile", "filename", "none.ies"));
        scene["nodes"].push_back({{"name", className}, {"object", light}});
        for (size_t i = 0; i < table["rows"].size(); ++i) {
            const std::string key = table["rows"][i][1];
            const bool metres = className == "CoronaLight" && (key == "width" || key == "height");
            std::ostringstream value;
            value << (static_cast<double>(i) + 1.5) * (metres ? 0.01 : 1.0);
            expected += "\"" + key + "\":" + value.str() + ",\n";
        }
    }
    const std::string written = WritePackage(scene).text;
    // The members stand one a line; take those between each light's type and its place.
    std::string found;
    std::istringstream lines(written);
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("    \"", 0) == 0 && line.find("\": ") == std::string::npos)
            line.erase(0, 4); // the first of a light
        if (line.rfind("\"", 0) == 0 && line.rfind("\"transform", 0) != 0 &&
            line.rfind("\"ies_file", 0) != 0 && line.rfind("\"ies_error", 0) != 0)
            found += line + "\n";
    }
    EXPECT_EQ(found, expected);
}

TEST(ClassRows, TheFormatsPageNamesEveryRow) {
    const std::string page = ReadFile("/docs/package-format.md");
    for (const json& table : Tables())
        for (const json& row : table["rows"])
            for (const json& name : row)
                EXPECT_NE(page.find("`" + name.get<std::string>() + "`"), std::string::npos)
                    << name;
}

} // namespace
} // namespace brimwave::testing
