#include "simhost/files/fbx_frame.h"
#include "tests/standins/simhost_fbx/fbx_reader.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>

namespace {

using namespace simhost;
using testing::ElementsAre;
using testing::IsEmpty;

/// A file with what `write` makes at its top level.
std::string FileWith(const std::function<void(FbxRecordWriter&)>& write) {
    std::string bytes;
    WriteFbxMark(bytes);
    FbxRecordWriter writer(bytes);
    write(writer);
    WriteFbxEnd(bytes, writer);
    return bytes;
}

TEST(FbxRecords, KeepEveryKindOfValue) {
    const std::vector<double> halves{0.5, -1.5};
    const fbxtest::Record file = fbxtest::ReadFbx(FileWith([&](FbxRecordWriter& w) {
        w.Leaf("Values", 7, std::int64_t{1} << 40, 0.25f, -0.1, FbxChar{'T'}, "text",
               FbxRaw{std::string_view("\0\xff", 2)}, halves, std::vector<std::int32_t>{});
    }));
    const fbxtest::Record& record = file["Values"];
    EXPECT_EQ(record.types, "ILFDCSRdi");
    EXPECT_EQ(record.Int(0), 7);
    EXPECT_EQ(record.Int(1), std::int64_t{1} << 40);
    EXPECT_EQ(std::get<double>(record.values[2]), 0.25);
    EXPECT_EQ(std::get<double>(record.values[3]), -0.1);
    EXPECT_EQ(record.Int(4), 'T');
    EXPECT_EQ(record.Text(5), "text");
    EXPECT_EQ(record.Text(6), std::string("\0\xff", 2));
    EXPECT_EQ(record.Doubles(7), halves);
    EXPECT_THAT(record.Ints(8), IsEmpty());
    EXPECT_FALSE(record.isList);
}

TEST(FbxRecords, NestWithTheirOwnEnds) {
    FbxInt32Slot slot;
    const fbxtest::Record file = fbxtest::ReadFbx(FileWith([&](FbxRecordWriter& w) {
        w.Begin("Outer", "value");
        w.Begin("Empty");
        w.End();
        slot = w.LeafSlot("Later");
        w.Begin("Inner", 1, 2);
        w.Leaf("Deep", 3);
        w.End();
        w.End();
        w.Fill(slot, 42);
    }));
    const fbxtest::Record& outer = file["Outer"];
    EXPECT_EQ(outer.Text(), "value");
    EXPECT_TRUE(outer["Empty"].isList);
    EXPECT_EQ(outer["Later"].Int(), 42);
    EXPECT_EQ(outer["Inner"]["Deep"].Int(), 3);
    EXPECT_EQ(outer.records.size(), 3u);
}

// One that packing shortens, and one that it can't.
TEST(FbxRecords, PackArraysOnlyWhereItPays) {
    std::vector<double> even(500'000, 1.25);
    std::vector<std::int32_t> noise;
    std::uint32_t state = 1;
    for (int i = 0; i < 500'000; ++i)
        noise.push_back(static_cast<std::int32_t>(state = state * 1664525u + 1013904223u));
    const std::string bytes = FileWith([&](FbxRecordWriter& w) {
        w.Leaf("Even", even);
        w.Leaf("Noise", noise);
    });
    const fbxtest::Record file = fbxtest::ReadFbx(bytes);
    EXPECT_EQ(file["Even"].Doubles(), even);
    EXPECT_EQ(file["Noise"].Ints(), std::vector<std::int64_t>(noise.begin(), noise.end()));
    EXPECT_LT(bytes.size(), noise.size() * sizeof(noise[0]) + 100'000);
}

// The footer's padding depends on where the records end.
TEST(FbxRecords, FooterFitsEveryLength) {
    for (std::size_t length = 0; length < 16; ++length)
        EXPECT_NO_THROW((void)fbxtest::ReadFbx(FileWith([&](FbxRecordWriter& w) {
            w.Leaf("Text", std::string(length, 'x'));
        }))) << length;
}

TEST(FbxFrame, AnnouncesTheObjects) {
    FbxSettings settings;
    settings.unitCentimetres = 100;
    const fbxtest::Record file = fbxtest::ReadFbx(FileWith([&](FbxRecordWriter& w) {
        FbxObjectCounts counts = WriteFbxFront(w, settings);
        counts.Add(FbxObjectKind::Model);
        counts.Add(FbxObjectKind::Model);
        counts.Add(FbxObjectKind::Geometry);
        FillFbxCounts(w, counts);
    }));
    const fbxtest::Record& global = file["GlobalSettings"];
    EXPECT_EQ(std::get<double>(global.Property("UnitScaleFactor")->values[4]), 100.0);
    EXPECT_EQ(global.Property("UpAxis")->Int(4), 2);
    EXPECT_EQ(file["FileId"].Text().size(), 16u);
    std::vector<std::pair<std::string, std::int64_t>> counts;
    for (const fbxtest::Record* type : file["Definitions"].All("ObjectType"))
        if ((*type)["Count"].Int() > 0)
            counts.emplace_back(type->Text(), (*type)["Count"].Int());
    EXPECT_THAT(counts, ElementsAre(std::pair{"GlobalSettings", 1}, std::pair{"Geometry", 1},
                                    std::pair{"Model", 2}));
    EXPECT_EQ(file["Definitions"]["Count"].Int(), 4);
}

} // namespace
