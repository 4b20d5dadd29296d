#include <max.h>

#include <gtest/gtest.h>

#include <numbers>

namespace {

constexpr float pi = std::numbers::pi_v<float>;

Matrix3 ScaledRows(const Matrix3& m, const Point3& s) {
    Matrix3 out = m;
    for (int i = 0; i < 3; ++i)
        out.SetRow(i, m.GetRow(i) * s[i]);
    return out;
}

Matrix3 TurnZ(float a) {
    return {{std::cos(a), std::sin(a), 0}, {-std::sin(a), std::cos(a), 0}, {0, 0, 1}, {0, 0, 0}};
}

Matrix3 Turned(float x, float y, float z, float angle) {
    const Point3 axis = Normalize({x, y, z}) * std::sin(angle / 2);
    Matrix3 m;
    Quat(-axis.x, -axis.y, -axis.z, std::cos(angle / 2)).MakeMatrix(m);
    return m;
}

void ExpectNear(const Matrix3& a, const Matrix3& b, float tolerance = 1e-5f) {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 3; ++j)
            EXPECT_NEAR(a[i][j], b[i][j], tolerance) << "row " << i << " column " << j;
}

Matrix3 Composed(const Point3& t, const Quat& q, const Point3& s) {
    Matrix3 m;
    q.MakeMatrix(m);
    m = ScaledRows(m, s);
    m.SetTrans(t);
    return m;
}

TEST(Matrix, QuaternionsOfTheHostTurnTheOtherWayRound) {
    const Quat q(TurnZ(pi / 2)); // +x to +y
    EXPECT_NEAR(q.z, -std::sqrt(0.5f), 1e-6);
    EXPECT_NEAR(q.w, std::sqrt(0.5f), 1e-6);
}

TEST(Matrix, QuaternionAndMatrixAgreeForEveryTurn) {
    const Point3 axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 2, 3}, {-3, 1, -2}, {1, 1, 0}};
    for (const Point3& axis : axes)
        for (const float angle : {0.f, 0.3f, 1.5f, 3.0f, pi, -2.9f}) {
            const Matrix3 m = Turned(axis.x, axis.y, axis.z, angle);
            Matrix3 back;
            Quat(m).MakeMatrix(back);
            ExpectNear(back, m);
        }
}

TEST(Matrix, InverseUndoesAndSingularGivesIdentity) {
    Matrix3 m = ScaledRows(Turned(1, 2, 3, 0.7f), {2, -3, 0.5f});
    m.SetTrans({10, -20, 30});
    ExpectNear(m * Inverse(m), Matrix3(), 1e-5f);
    ExpectNear(Inverse(ScaledRows(m, {1, 0, 1})), Matrix3());
}

struct Split {
    const char* name;
    Point3 scale;
    Point3 expected;
};

TEST(Matrix, DecomposeGivesBackWhatWasPutTogether) {
    const Split cases[] = {{"uniform", {2, 2, 2}, {2, 2, 2}},
                           {"along the axes", {2, 0.5f, 7}, {2, 0.5f, 7}},
                           {"mirrored in x", {-1, 1, 1}, {-1, -1, -1}},
                           {"mirrored in all", {-2, -3, -4}, {-2, -3, -4}},
                           {"two axes turned", {-2, -3, 4}, {2, 3, 4}},
                           {"flat", {2, 3, 0}, {2, 3, 0}},
                           {"a line", {0, 3, 0}, {0, 3, 0}},
                           {"nothing", {0, 0, 0}, {0, 0, 0}}};
    for (const Split& c : cases) {
        SCOPED_TRACE(c.name);
        Matrix3 m = ScaledRows(Turned(1, -2, 0.5f, 1.1f), c.scale);
        m.SetTrans({1, 2, 3});
        Point3 t, s;
        Quat q;
        DecomposeMatrix(m, t, q, s);
        EXPECT_EQ(t, Point3(1, 2, 3));
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(s[i], c.expected[i], 1e-4);
        ExpectNear(Composed(t, q, s), m, 1e-4f);
        EXPECT_NEAR(q.x * q.x + q.y * q.y + q.z * q.z + q.w * q.w, 1, 1e-4);
    }
}

TEST(Matrix, DecomposeOfShearKeepsTheNearestTurn) {
    Matrix3 shear({1, 0.4f, 0}, {0, 1, 0}, {0, 0, 2}, {0, 0, 0});
    Point3 t, s;
    Quat q;
    DecomposeMatrix(shear, t, q, s);
    EXPECT_NEAR(s.x * s.y * s.z, 2, 1e-4); // the volume stays
    Matrix3 turn;
    q.MakeMatrix(turn);
    EXPECT_LT(std::abs(turn[0][1]), 0.4f);
    EXPECT_EQ(turn.Parity(), 0);
}

} // namespace
