// The library as the host meets it: exports, class descriptor, utility object.
#include "tests/plugin/panel_host.h"

#include <max.h>
#include <utilapi.h>

#include <gtest/gtest.h>

namespace brimwave::testing {
namespace {

class ExportsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        library_ = LoadLibraryW(PluginPath().c_str());
        ASSERT_NE(library_, nullptr) << GetLastError();
    }
    void TearDown() override { FreeLibrary(library_); }

    template <typename Result, typename... Arguments>
    Result Call(const char* name, Arguments... arguments) const {
        using Function = Result (*)(Arguments...);
        const auto function =
            reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library_, name)));
        EXPECT_NE(function, nullptr) << name;
        return function ? function(arguments...) : Result{};
    }
    ClassDesc* Descriptor() const { return Call<ClassDesc*>("LibClassDesc", 0); }

    HMODULE library_ = nullptr;
};

TEST_F(ExportsTest, TellsWhatItIs) {
    EXPECT_STREQ(Call<const MCHAR*>("LibDescription"), L"Brimwave Platform");
    EXPECT_EQ(Call<int>("LibNumberClasses"), 1);
    EXPECT_EQ(Call<ULONG>("LibVersion"), 0x65904000u);
    for (const int i : {1, -1, 1000})
        EXPECT_EQ(Call<ClassDesc*>("LibClassDesc", i), nullptr) << i;
}

TEST_F(ExportsTest, StartsAndStopsAnyNumberOfTimes) {
    EXPECT_EQ(Call<int>("LibShutdown"), 1) << "before the start";
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Call<int>("LibInitialize"), 1);
        EXPECT_EQ(Call<int>("LibInitialize"), 1) << "again while it runs";
        EXPECT_EQ(Call<int>("LibShutdown"), 1);
        EXPECT_EQ(Call<int>("LibShutdown"), 1) << "again after the end";
    }
}

TEST_F(ExportsTest, DescribesItsOneClass) {
    ClassDesc* const descriptor = Descriptor();
    ASSERT_NE(descriptor, nullptr);
    EXPECT_EQ(descriptor, Descriptor());
    EXPECT_TRUE(descriptor->IsPublic());
    EXPECT_STREQ(descriptor->ClassName(), L"Brimwave Platform");
    EXPECT_STREQ(descriptor->NonLocalizedClassName(), L"Brimwave Platform");
    EXPECT_STREQ(descriptor->Category(), L"Corona Tools");
    EXPECT_STREQ(descriptor->InternalName(), L"BrimwavePlatform");
    EXPECT_EQ(descriptor->SuperClassID(), 0x1020u);
    EXPECT_TRUE(descriptor->ClassID() == Class_ID(0x7F3A1C9E, 0x4B2D6E11));
    EXPECT_EQ(descriptor->HInstance(), library_);

    void* const utility = descriptor->Create(FALSE);
    EXPECT_NE(utility, nullptr);
    EXPECT_EQ(descriptor->Create(TRUE), utility);
    static_cast<UtilityObj*>(utility)->DeleteThis();
    EXPECT_EQ(descriptor->Create(FALSE), utility) << "the object is static";
}

TEST_F(ExportsTest, KeepsNoParameterBlocks) {
    auto* const descriptor = dynamic_cast<ClassDesc2*>(Descriptor());
    ASSERT_NE(descriptor, nullptr);
    EXPECT_EQ(descriptor->NumParamBlockDescs(), 0);
    // Thrown in the library, caught here: the two are separate modules.
    EXPECT_THROW(descriptor->GetParamBlockDesc(0), TabOutOfRangeException);
    EXPECT_THROW(descriptor->GetParamBlockDesc(-1), TabOutOfRangeException);
}

} // namespace
} // namespace brimwave::testing
