#include "pipeline/job_name.h"

#include <gtest/gtest.h>

namespace brimwave {
namespace {

TEST(JobName, IsTheFilesNameWithoutWhatAFileNameCannotHold) {
    const struct {
        const wchar_t* scene;
        const wchar_t* name;
    } rows[] = {
        {L"", L"untitled"},
        {L"C:\\Scenes\\room.max", L"room"},
        {L"/home/me/room.max", L"room"},
        {L"C:\\a/b\\c/kitchen", L"kitchen"},
        {L"C:\\my.folder\\kitchen", L"kitchen"},
        {L"C:\\Scenes\\", L"untitled"},
        {L"my:scene.v2.max", L"my_scene.v2"},
        {L"a\"b*c<d>e?f|g:h.max", L"a_b_c_d_e_f_g_h"},
        {L"tab\there\x1f.max", L"tab_here_"},
        {L"dots. . ..max", L"dots"},
        {L". .max", L"untitled"},
        {L".max", L"untitled"},
        {L"...", L"untitled"},
        {L" leading stays.max", L" leading stays"},
        {L"Küche \xd83c\xdfe0.max", L"Küche \xd83c\xdfe0"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(JobNameOf(row.scene), row.name);
}

TEST(JobName, SuffixIsTheLowBase36DigitsLowestFirst) {
    EXPECT_EQ(JobSuffix(0), L"aaaaaaaa");
    EXPECT_EQ(JobSuffix(25), L"zaaaaaaa");
    EXPECT_EQ(JobSuffix(26), L"0aaaaaaa");
    EXPECT_EQ(JobSuffix(35), L"9aaaaaaa");
    EXPECT_EQ(JobSuffix(36 * 36 + 2 * 36 + 3), L"dcbaaaaa");
    const std::uint64_t eightDigits = 36ULL * 36 * 36 * 36 * 36 * 36 * 36 * 36;
    EXPECT_EQ(JobSuffix(eightDigits - 1), L"99999999");
    EXPECT_EQ(JobSuffix(eightDigits + 1), L"baaaaaaa");
}

} // namespace
} // namespace brimwave
