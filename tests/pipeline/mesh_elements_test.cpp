#include "pipeline/mesh_elements.h"

#include <max.h>

#include <gmock/gmock.h>

#include <array>
#include <random>

namespace brimwave {
namespace {

using ::testing::Each;
using ::testing::ElementsAreArray;

using Triangle = std::array<DWORD, 3>;

Mesh MeshOf(int vertices, const std::vector<Triangle>& faces) {
    Mesh mesh;
    mesh.setNumVerts(vertices);
    mesh.setNumFaces(static_cast<int>(faces.size()));
    for (size_t f = 0; f < faces.size(); ++f)
        mesh.faces[f].setVerts(faces[f][0], faces[f][1], faces[f][2]);
    return mesh;
}

TEST(MeshElements, FacesAreTogetherThatShareAVertex) {
    const struct {
        const char* what;
        std::vector<Triangle> faces;
        std::vector<std::uint32_t> elements;
    } rows[] = {
        {"none", {}, {}},
        {"apart", {{0, 1, 2}, {3, 4, 5}, {6, 7, 8}}, {0, 1, 2}},
        {"an edge", {{0, 1, 2}, {2, 1, 3}}, {0, 0}},
        {"one vertex", {{0, 1, 2}, {2, 3, 4}}, {0, 0}},
        {"joined by the last", {{0, 1, 2}, {3, 4, 5}, {6, 7, 8}, {8, 1, 5}}, {0, 0, 0, 0}},
        {"by turns", {{6, 7, 8}, {0, 1, 2}, {8, 5, 4}, {2, 3, 9}}, {0, 1, 0, 1}},
        {"no area", {{0, 0, 0}, {1, 1, 2}, {0, 3, 3}}, {0, 1, 0}},
        {"no such vertex", {{0, 1, 99}, {99, 2, 3}, {99, 98, 97}, {3, 99, 4}}, {0, 1, 2, 1}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const MeshElements found = CollectMeshElements(MeshOf(10, row.faces));
        EXPECT_THAT(found.ofFace, ElementsAreArray(row.elements));
        std::uint32_t most = 0;
        for (const std::uint32_t element : row.elements)
            most = std::max(most, element + 1);
        EXPECT_EQ(found.count, most);
    }
}

/// Labels spread from face to face until nothing changes.
std::vector<std::uint32_t> SpreadLabels(const std::vector<Triangle>& faces) {
    std::vector<std::uint32_t> labels(faces.size());
    for (size_t f = 0; f < faces.size(); ++f)
        labels[f] = static_cast<std::uint32_t>(f);
    for (bool changed = true; changed;) {
        changed = false;
        for (size_t a = 0; a < faces.size(); ++a)
            for (size_t b = 0; b < faces.size(); ++b) {
                bool share = false;
                for (const DWORD v : faces[a])
                    share = share || v == faces[b][0] || v == faces[b][1] || v == faces[b][2];
                if (share && labels[a] > labels[b]) {
                    labels[a] = labels[b];
                    changed = true;
                }
            }
    }
    return labels;
}

TEST(MeshElements, AgreeWithSpreadingLabelsOnRandomMeshes) {
    std::mt19937 random(7);
    for (const DWORD vertices : {12u, 60u, 150u, 400u}) {
        std::vector<Triangle> faces(80);
        for (Triangle& face : faces)
            for (DWORD& corner : face)
                corner = static_cast<DWORD>(random() % vertices);
        const MeshElements found = CollectMeshElements(MeshOf(static_cast<int>(vertices), faces));
        const std::vector<std::uint32_t> labels = SpreadLabels(faces);
        // A label is its element's first face, so labels in order are the elements in order.
        std::vector<std::uint32_t> elements;
        std::uint32_t next = 0;
        for (size_t f = 0; f < faces.size(); ++f)
            elements.push_back(labels[f] == f ? next++ : elements[labels[f]]);
        EXPECT_EQ(found.ofFace, elements);
        EXPECT_EQ(found.count, next);
    }
}

TEST(MeshElements, LongStripsOfAnyOrderAreOne) {
    constexpr DWORD count = 200000;
    std::vector<Triangle> faces;
    for (DWORD f = 0; f < count; ++f)
        faces.push_back({f, f + 1, f + 2});
    for (const bool backwards : {false, true}) {
        if (backwards)
            std::reverse(faces.begin(), faces.end());
        const MeshElements found = CollectMeshElements(MeshOf(count + 2, faces));
        EXPECT_EQ(found.count, 1u);
        EXPECT_THAT(found.ofFace, Each(0u));
    }
}

} // namespace
} // namespace brimwave
