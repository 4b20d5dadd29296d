#include "host/asset_paths.h"

#include "tests/support/temp_folder.h"

#include <max.h>

#include <gtest/gtest.h>

namespace brimwave {
namespace {

TEST(AssetFinder, LooksIntoAMissingFolderOnce) {
    testing::TempFolder folder;
    AssetFinder finder;
    EXPECT_FALSE(finder.Exists(L""));
    EXPECT_FALSE(finder.Exists(folder.Path(L"late.png")));
    EXPECT_FALSE(finder.Exists(folder.Path(L"maps\\wood.png")));
    folder.Write(L"late.png", "x");
    folder.Write(L"maps\\wood.png", "x");
    EXPECT_TRUE(finder.Exists(folder.Path(L"late.png")));
    EXPECT_FALSE(finder.Exists(folder.Path(L"maps\\wood.png")));
    EXPECT_TRUE(AssetFinder().Exists(folder.Path(L"maps\\wood.png")));
}

} // namespace
} // namespace brimwave
