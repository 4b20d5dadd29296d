#include "simhost/files/fbx_transform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

using namespace simhost;

double Error(const FbxAffine& a, const FbxAffine& b) {
    double worst = 0;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 3; ++c)
            worst = std::max(worst, std::isfinite(a.row[r][c]) ? std::abs(a.row[r][c] - b.row[r][c])
                                                               : INFINITY);
    return worst;
}

FbxAffine Rows(FbxVec3 x, FbxVec3 y, FbxVec3 z, FbxVec3 t = {0, 0, 0}) {
    return {{x, y, z, t}};
}

TEST(FbxTransform, SquareMatricesComeBack) {
    const FbxAffine matrices[] = {
        {},
        Rows({0, 1, 0}, {-1, 0, 0}, {0, 0, 1}, {1, 2, 3}),
        Rows({0, 0, -1}, {0, 1, 0}, {1, 0, 0}), // a quarter turn about y, where angles meet
        Rows({0, 0, 1}, {0, 1, 0}, {-1, 0, 0}), // and back
        Rows({-1, 0, 0}, {0, 1, 0}, {0, 0, 1}), // mirrored
        Rows({2, 0, 0}, {0, -3, 0}, {0, 0, 4}), // mirrored and scaled
        Rows({-1, 0, 0}, {0, -1, 0}, {0, 0, -1}),
        Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 0}), // flat
        Rows({0, 2, 0}, {0, 0, 0}, {0, 0, 3}),
        Rows({0, 0, 0}, {0, 0, 5}, {0, 4, 0}),
        Rows({0, 7, 0}, {0, 0, 0}, {0, 0, 0}), // a line
        Rows({0, 0, 0}, {0, 0, 0}, {0, 0, 0}, {1, 1, 1}),
    };
    for (const FbxAffine& m : matrices) {
        EXPECT_TRUE(IsSquare(m));
        EXPECT_LT(Error(Compose(Decompose(m)), m), 1e-12);
    }
    EXPECT_EQ(Decompose(Rows({-1, 0, 0}, {0, 1, 0}, {0, 0, 1})).scale, (FbxVec3{-1, 1, 1}));
}

TEST(FbxTransform, SkewedMatricesSplitExactly) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-3, 3);
    for (int i = 0; i < 500; ++i) {
        FbxAffine m;
        for (FbxVec3& row : m.row)
            for (double& v : row)
                v = number(random);
        if (i % 5 == 0)
            m.row[1] = m.row[0]; // no volume
        const FbxPlacement split = SplitSkewed(m);
        EXPECT_LT(Error(Compose(split.geometric) * Compose(split.local), m), 1e-9) << i;
        EXPECT_EQ(split.geometric.scale, (FbxVec3{1, 1, 1}));
    }
}

TEST(FbxTransform, SkewedViewsKeepTheirDirection) {
    const FbxAffine skewed = Rows({1, 0.5, 0}, {0, 1, 0.3}, {0.2, 0, 2});
    EXPECT_FALSE(IsSquare(skewed));
    const FbxAffine kept = Compose(Decompose(skewed));
    EXPECT_TRUE(IsSquare(kept));
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(kept.row[2][c], skewed.row[2][c], 1e-12);
}

TEST(FbxTransform, NumbersThatAreNoneDoNotSpread) {
    Matrix3 broken;
    broken.SetRow(0, Point3(NAN, 0, 0));
    broken.SetTrans(Point3(INFINITY, 5, 0));
    EXPECT_EQ(ToFbxAffine(broken).row[0], (FbxVec3{1, 0, 0}));
    EXPECT_EQ(ToFbxAffine(broken).row[3], (FbxVec3{0, 5, 0}));
    const FbxAffine flat = Rows({1, 0, 0}, {0, 1, 0}, {0, 0, 0});
    EXPECT_LT(Error(Inverse(flat), {}), 1e-12);
    const FbxAffine m = Rows({0, 2, 0}, {-1, 0, 0}, {0, 0, 4}, {1, 2, 3});
    EXPECT_LT(Error(m * Inverse(m), {}), 1e-12);
}

} // namespace
