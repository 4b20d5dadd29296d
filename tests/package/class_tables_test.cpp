// The class tables: every row of every class is written as its host value, every name finds its
// class, and the page that is printed from them is the present one. That page is what tells
// whether a row was meant: it changes with each of them.
#include "host/text.h"
#include "package/class_dispatch.h"
#include "package/classes/class_lists.h"
#include "tests/class_page/class_page.h"
#include "tests/package/package_kit.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

namespace brimwave::testing {
namespace {

TEST(ClassPage, IsPrintedFromTheTables) {
    std::ifstream file(SourcePath("docs/package-classes.md"), std::ios::binary);
    std::istringstream tables(ClassPage());
    std::string committed, printed;
    for (int line = 1; std::getline(tables, printed); ++line) {
        std::getline(file, committed);
        ASSERT_EQ(committed, printed) << "docs/package-classes.md is stale from line " << line
                                      << "; docs/building.md says how to print it anew";
    }
    EXPECT_FALSE(std::getline(file, committed))
        << "the page has more than the tables: " << committed;
}

/// Calls `visit(entry, kind)` for each class of materials and maps.
template <class Visit>
void ForEachClass(Visit visit) {
    for (const ClassFamily& family : ClassFamilies())
        if (family.kind != ClassKind::Other)
            for (const ClassEntry& entry : family.classes)
                visit(entry, family.kind);
}

std::string OtherCase(std::string name) {
    for (char& c : name)
        c = static_cast<char>(std::isupper(static_cast<unsigned char>(c)) ? std::tolower(c)
                                                                          : std::toupper(c));
    return name;
}

/// Class names of any letter case that the tables lead to the entry.
std::vector<std::string> NamesOf(const ClassEntry& entry) {
    std::vector<std::string> names;
    for (const std::wstring_view name : entry.classNames)
        names.push_back(OtherCase(WideToUtf8(name)));
    for (const NamePart& part : entry.nameParts)
        names.push_back("My " + OtherCase(WideToUtf8(part.text)) + " 2");
    return names;
}

TEST(ClassDispatch, EveryKeyFindsItsClass) {
    std::set<std::wstring_view> names;
    std::map<int, std::pair<std::wstring_view, const ClassEntry*>> parts;
    ForEachClass([&](const ClassEntry& entry, ClassKind) {
        for (const std::wstring_view name : entry.classNames)
            EXPECT_TRUE(names.insert(name).second) << WideToUtf8(name) << " is there twice";
        for (const NamePart& part : entry.nameParts)
            EXPECT_TRUE(parts.try_emplace(part.rank, part.text, &entry).second)
                << WideToUtf8(part.text) << " has the rank of another part";
        for (const std::string& name : NamesOf(entry))
            EXPECT_EQ(FindClass(Wide(name)), &entry) << name;
    });
    for (auto part = parts.begin(), next = std::next(part); next != parts.end(); ++part, ++next) {
        const std::wstring both =
            std::wstring(next->second.first) + L" " + std::wstring(part->second.first);
        EXPECT_EQ(FindClass(both), part->second.second) << WideToUtf8(both);
    }
    EXPECT_EQ(FindClass(L"CoronaBump"), nullptr);
    EXPECT_EQ(FindClass(L""), nullptr);
}

TEST(ClassDispatch, NamesThatHostsUse) {
    const struct {
        const wchar_t *className, *entry;
    } rows[] = {
        {L"\rCoronaPhysicalMtl", L"Corona physical and legacy materials"},
        {L"CoronaLegacyMtl", L"Corona physical and legacy materials"},
        {L"My Physical Thing", L"Corona physical and legacy materials"},
        {L"Physical Material", L"Physical Material"},
        {L"PBR Material (Spec/Gloss)", L"PBR Material"},
        {L"OpenPBR Material", L"PBR Material"},
        {L"glTF Material", L"glTF Material"},
        {L"CoronaAO", L"CoronaAO"},
        {L"ChaosScatterSurfaceColor", L"CoronaAO"}, // by its "ao"
        {L"CoronaColorCorrect", L"CoronaColorCorrect"},
        {L"CoronaColorX", L"CoronaColor"},
        {L"CoronaMix", L"CoronaMix"},
        {L"VRayTriplanarTex", L"CoronaTriplanar"},
        {L"RailClone Color", L"Forest Color, RailClone Color"},
        {L"Standard (Legacy)", L"Standard"}, // its whole name, before its "legacy"
        {L"Perlin Marble", L"Splat, Speckle, Smoke, Dent, Marble, Perlin Marble, Stucco"},
    };
    for (const auto& row : rows) {
        const ClassEntry* const entry = FindClass(row.className);
        ASSERT_NE(entry, nullptr) << WideToUtf8(row.className);
        EXPECT_EQ(entry->name, row.entry) << WideToUtf8(row.className);
    }
}

TEST(ClassDispatch, TypesUnderTheConvertersNames) {
    const struct {
        const wchar_t* className;
        const wchar_t *material, *map;
    } rows[] = {
        {L"Composite", L"compositematerial", L"CompositeTexturemap"},
        {L"Standard (Legacy)", L"Standardmaterial", L"Standardmaterial"},
        {L"Top Bottom", L"TopBottom", L"TopBottom"},
        {L"Bitmap", L"Bitmaptexture", L"Bitmaptexture"},
        {L"bitmap", L"bitmap", L"bitmap"},
        {L"Noise", L"Noise", L"Noise"},
        {L"", L"", L""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(NormaliseClassName(row.className, true), row.material);
        EXPECT_EQ(NormaliseClassName(row.className, false), row.map);
    }
}

/// A parameter of a type by turns with a value that no other one has, as far as its type goes.
json NextParam(const std::string& name, bool length) {
    static int number = 0;
    ++number;
    if (length)
        return Param(name, "world", number + 0.25);
    switch (number % 6) {
    case 0:
        return Param(name, "pcnt_frac", number + 0.25);
    case 1:
        return Param(name, "int", -number);
    case 2:
        return Param(name, "bool", number % 4 == 2);
    case 3:
        return Param(name, "frgba", {number, 0.5, 0, 0.1});
    case 4:
        return Param(name, "string", "text " + std::to_string(number));
    default:
        return Param(name, "point3", {number, -1, 0.125});
    }
}

/// A class with a parameter for each row and the members that they give, in lines `key=value`.
struct Subject {
    json entry;
    std::map<std::string, std::string> values; // by parameter
    std::vector<std::string> texts;            // of each table

    /// The parameters stand in reverse order, spelled in the other letter case and spread over two
    /// blocks; a parameter that two rows name stands once.
    Subject(const std::string& className, const std::vector<std::span<const ParamRow>>& tables) {
        json blocks = {{{"name", "one"}, {"params", json::array()}},
                       {{"name", "two"}, {"params", json::array()}}};
        for (const auto& rows : tables)
            for (size_t i = rows.size(); i-- > 0;)
                if (const std::string name = OtherCase(WideToUtf8(rows[i].param));
                    !values.contains(name)) {
                    const json param = NextParam(name, rows[i].unit == RowUnit::Length);
                    values[name] = ValueText(param.at("value"));
                    blocks[i % 2]["params"].push_back(param);
                }
        entry = {{"class", className}, {"replace_blocks", true}, {"blocks", blocks}};
        for (const auto& rows : tables) {
            std::string text;
            for (const ParamRow& row : rows)
                text +=
                    WideToUtf8(row.key) + "=" + values.at(OtherCase(WideToUtf8(row.param))) + "\n";
            texts.push_back(text);
        }
    }

    /// The members of each table stand together in their order, and no other member has one of
    /// their keys.
    void Expect(std::string members) const {
        std::set<std::string> keys;
        for (const std::string& text : texts) {
            const size_t at = members.find(text);
            ASSERT_NE(at, std::string::npos) << entry.at("class") << "\n" << members << text;
            members.erase(at, text.size());
            std::istringstream lines(text);
            for (std::string line; std::getline(lines, line);)
                keys.insert(line.substr(0, line.find('=')));
        }
        for (const std::string& key : keys)
            EXPECT_EQ(("\n" + members).find("\n" + key + "="), std::string::npos)
                << entry.at("class") << members;
    }

  private:
    static std::string ValueText(const json& value) {
        if (!value.is_array())
            return value.dump();
        std::ostringstream text;
        text << "[" << value[0] << "," << value[1] << "," << value[2] << "]";
        return text.str();
    }
};

TEST(ClassRows, EveryMaterialAndMapWritesItsRowsInOrder) {
    json scene = EmptyScene();
    json holder = {{"class", "Plain"}, {"blocks", json::array()}, {"slot_list", json::array()}};
    std::vector<Subject> subjects;
    ForEachClass([&](const ClassEntry& entry, ClassKind kind) {
        for (const std::string& className : NamesOf(entry)) {
            std::vector<std::span<const ParamRow>> tables = {entry.rows, entry.rowsAfter};
            if (className == "CORONABITMAP")
                tables.emplace_back(BitmapImage().rows);
            Subject& subject = subjects.emplace_back(className, tables);
            const std::string name = "subject " + std::to_string(subjects.size());
            subject.entry["name"] = name;
            subject.entry["sub_objects"] = json::object();
            if (kind == ClassKind::Material) {
                scene["nodes"].push_back(Box(name, subject.entry));
            } else {
                scene["maps"][name] = subject.entry;
                holder["slot_list"].push_back({{"name", name}, {"map", name}});
            }
        }
    });
    scene["nodes"].push_back(Box("maps", holder));
    const Written written = WritePackage(scene);
    for (const Subject& subject : subjects)
        subject.Expect(ToText(NodeMembers(written.text, subject.entry.at("name"))));
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
    std::vector<Subject> subjects;
    const auto add = [&](const char* kind, const ClassEntry& entry) {
        const std::string name = WideToUtf8(entry.name);
        Subject& subject = subjects.emplace_back(
            name, std::vector<std::span<const ParamRow>>{entry.rows, entry.rowsAfter});
        if (!entry.webFile.empty() && entry.classNames.empty()) {
            subject.entry["class"] = "Free Light";
            subject.entry["blocks"][0]["params"].push_back(
                Param("webFile", "filename", "none.ies"));
        }
        subject.entry["super_class"] = kind;
        scene["nodes"].push_back({{"name", name}, {"object", subject.entry}});
    };
    for (const ClassEntry& entry : Lights())
        add("light", entry);
    add("camera", CameraLens());
    const std::string text = WritePackage(scene).text;
    for (size_t i = 0; i < subjects.size(); ++i)
        subjects[i].Expect(EntryMembers(text, scene["nodes"][i].at("name")));
}

TEST(ClassRows, EveryDisplacementModifierWritesItsRowsInOrder) {
    const struct {
        const char* className;
        const ClassEntry& entry;
        const char *begin, *end;
    } rows[] = {
        {"CoronaDisplacement", CoronaDisplacement(), "", "}"},
        {"corona_displacementMod", CoronaDisplacement(), "", "}"},
        {"VRayDisplacement", VRayDisplacement(), "\"vray_disp\":true,", ",\"vray_disp_has"},
        {"VRAY_DISPLACEMENTMOD", VRayDisplacement(), "\"vray_disp\":true,", ",\"vray_disp_has"},
    };
    for (const auto& row : rows) {
        const Subject subject(row.className, {row.entry.rows});
        json scene = SceneOf(ClassWith("Plain", {}));
        scene["nodes"][0]["modifiers"] = json::array({subject.entry});
        std::string expected;
        std::istringstream lines(subject.texts[0]);
        for (std::string line; std::getline(lines, line);)
            expected += (expected.empty() ? "\"" : ",\"") + line.replace(line.find('='), 1, "\":");
        expected = std::string("\"displacement_mod\": {") + row.begin + expected + row.end;
        EXPECT_NE(WritePackage(scene).text.find(expected), std::string::npos) << expected;
    }
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

} // namespace
} // namespace brimwave::testing
