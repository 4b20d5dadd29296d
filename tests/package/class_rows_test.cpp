// Every row of every table, in one scene: class_rows.json says which members a class has, in which
// order. What is expected of them is read from the scene file.
#include "tests/package/package_kit.h"

#include <gtest/gtest.h>

#include <algorithm>
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

/// A parameter of a type by turns with a value that no other one has, as far as its type goes.
json NextParam(const std::string& name, bool length) {
    static int number = 0;
    ++number;
    const std::string spelled = OtherCase(name);
    if (length)
        return Param(spelled, "world", number + 0.25);
    switch (number % 6) {
    case 0:
        return Param(spelled, "pcnt_frac", number + 0.25);
    case 1:
        return Param(spelled, "int", -number);
    case 2:
        return Param(spelled, "bool", number % 4 == 2);
    case 3:
        return Param(spelled, "frgba", {number, 0.5, 0, 0.1});
    case 4:
        return Param(spelled, "string", "text " + std::to_string(number));
    default:
        return Param(spelled, "point3", {number, -1, 0.125});
    }
}

/// The class with all parameters of its rows, in reverse order, spelled in the other letter case
/// and spread over two blocks; a parameter that two rows name stands once.
json EntryWithRows(const std::string& className, const json& rows) {
    json blocks = {{{"name", "one"}, {"params", json::array()}},
                   {{"name", "two"}, {"params", json::array()}}};
    std::vector<std::string> names;
    for (size_t i = rows.size(); i-- > 0;) {
        const std::string name = rows[i][0];
        if (std::find(names.begin(), names.end(), OtherCase(name)) != names.end())
            continue;
        names.push_back(OtherCase(name));
        blocks[i % 2]["params"].push_back(NextParam(name, rows[i].size() > 2));
    }
    return {{"class", className}, {"replace_blocks", true}, {"blocks", blocks}};
}

/// The JSON text of a parameter of the scene file, by a row that names it.
std::string ValueText(const json& entry, const json& row) {
    const std::string name = OtherCase(row[0]);
    for (const json& block : entry.at("blocks"))
        for (const json& param : block.at("params")) {
            if (param.at("name") != name)
                continue;
            const json& value = param.at("value");
            if (!value.is_array())
                return value.dump();
            std::ostringstream text;
            text << "[" << value[0] << "," << value[1] << "," << value[2] << "]";
            return text.str();
        }
    return "no such parameter";
}

/// The member lines `key=value` that the rows of an entry give.
std::string ExpectedMembers(const json& entry, const json& rows) {
    std::string text;
    for (const json& row : rows)
        text += row[1].get<std::string>() + "=" + ValueText(entry, row) + "\n";
    return text;
}

/// The rows' members stand together in their order, and no other line has one of their keys.
void ExpectRows(const std::string& members, const json& entry, const json& rows) {
    const std::string expected = ExpectedMembers(entry, rows);
    const size_t at = members.find(expected);
    ASSERT_NE(at, std::string::npos) << entry.at("class") << "\n" << members << expected;
    const std::string others = "\n" + members.substr(0, at) + members.substr(at + expected.size());
    for (const json& row : rows)
        EXPECT_EQ(others.find("\n" + row[1].get<std::string>() + "="), std::string::npos)
            << entry.at("class") << members;
}

/// Calls `visit(table, class name)` for each class of the tables of that kind.
template <class Visit>
void ForEachClass(const std::string& kind, Visit visit) {
    for (const json& table : Tables())
        if (table.at("kind") == kind)
            for (const json& className : table.at("classes"))
                visit(table, className.get<std::string>());
}

TEST(ClassRows, EveryMaterialAndMapWritesItsRowsInOrder) {
    json scene = EmptyScene();
    std::vector<std::pair<json, const json*>> subjects; // entry, rows
    const auto addSubject = [&](const json& table, const std::string& className) {
        json entry = EntryWithRows(className, table.at("rows"));
        entry["name"] = "subject " + std::to_string(subjects.size());
        entry["sub_objects"] = json::object();
        subjects.emplace_back(entry, &table.at("rows"));
        return entry;
    };
    ForEachClass("material", [&](const json& table, const std::string& className) {
        const json entry = addSubject(table, className);
        scene["nodes"].push_back(Box(entry.at("name"), entry));
    });
    json holder = {{"class", "Plain"}, {"blocks", json::array()}, {"slot_list", json::array()}};
    ForEachClass("texmap", [&](const json& table, const std::string& className) {
        const json entry = addSubject(table, className);
        const std::string name = entry.at("name");
        scene["maps"][name] = entry;
        holder["slot_list"].push_back({{"name", name}, {"map", name}});
    });
    scene["nodes"].push_back(Box("maps", holder));
    ASSERT_GT(subjects.size(), 120u);

    const Written written = WritePackage(scene);
    for (const auto& [entry, rows] : subjects)
        ExpectRows(ToText(NodeMembers(written.text, entry.at("name"))), entry, *rows);
}

/// All lines `"key":value`, as `key=value`, of the entry of that name in "lights" or "cameras".
std::string EntryMembers(const std::string& text, const std::string& name) {
    const size_t at = text.find("_name\": \"" + name + "\"");
    std::istringstream lines(text.substr(at, text.find("\n  }", at) - at));
    std::string members;
    for (std::string line; std::getline(lines, line);) {
        line.erase(0, std::min(line.find_first_not_of(' '), line.size()));
        const size_t colon = line.find("\":");
        if (line.rfind("\"", 0) != 0 || colon == std::string::npos || line[colon + 2] == ' ')
            continue;
        if (line.back() == ',')
            line.pop_back();
        members += line.substr(1, colon - 1) + "=" + line.substr(colon + 2) + "\n";
    }
    return members;
}

TEST(ClassRows, EveryLightAndCameraWritesItsRowsInOrder) {
    json scene = EmptyScene();
    std::vector<std::pair<json, const json*>> subjects; // entry, rows
    const auto add = [&](const json& table, const std::string& className) {
        json entry = EntryWithRows(className, table.at("rows"));
        if (className == "Free Light")
            entry["blocks"][0]["params"].push_back(Param("webFile", "filename", "none.ies"));
        entry["super_class"] = table.at("kind");
        scene["nodes"].push_back({{"name", className}, {"object", entry}});
        subjects.emplace_back(entry, &table.at("rows"));
    };
    ForEachClass("light", add);
    ForEachClass("camera", add);
    ASSERT_EQ(subjects.size(), 7u);
    const std::string text = WritePackage(scene).text;
    for (const auto& [entry, rows] : subjects)
        ExpectRows(EntryMembers(text, entry.at("class")), entry, *rows);
}

TEST(ClassRows, EveryDisplacementModifierWritesItsRowsInOrder) {
    ForEachClass("modifier", [](const json& table, const std::string& className) {
        const json entry = EntryWithRows(className, table.at("rows"));
        std::string expected = className.rfind("VRay", 0) == 0 ? ",\"vray_disp\":true" : "";
        for (const json& row : table.at("rows"))
            expected += ",\"" + row[1].get<std::string>() + "\":" + ValueText(entry, row);
        json scene = SceneOf(ClassWith("Plain", {}));
        scene["nodes"][0]["modifiers"] = json::array({entry});
        const std::string text = WritePackage(scene).text;
        EXPECT_NE(text.find("\"displacement_mod\": {" + expected.substr(1)), std::string::npos)
            << className << expected << text;
    });
}

TEST(ClassRows, LengthsOfLightsAreInMetres) {
    json scene = EmptyScene();
    scene["units"] = {{"type", "centimeters"}};
    scene["nodes"] = {
        {{"name", "lamp"},
         {"object", {{"class", "CoronaLight"}, {"params", {{"width", 150}, {"height", 25}}}}}}};
    const json light = WritePackage(scene).document.at("lights").at(0);
    EXPECT_EQ(light.at("width"), 1.5);
    EXPECT_EQ(light.at("height"), 0.25);
}

TEST(ClassRows, TheFormatsPageNamesEveryRow) {
    const std::string page = ReadFile("/docs/package-format.md");
    for (const json& table : Tables())
        for (const json& row : table["rows"])
            for (size_t i = 0; i < 2; ++i)
                EXPECT_NE(page.find("`" + row[i].get<std::string>() + "`"), std::string::npos)
                    << row[i];
}

} // namespace
} // namespace brimwave::testing
