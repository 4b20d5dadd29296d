#pragma once
// Scenes with maps that choose, baked, and their colours read back.
#include "tests/pipeline/scene_kit.h"
#include "tests/support/choice_decoder.h"

#include <triobj.h>

namespace brimwave {

/// A mesh of `elements` squares of two faces each that stand apart; element e has the material
/// ids `ids[e % ids.size()]`. With texture coordinates, smoothing groups and explicit normals.
[[nodiscard]] nlohmann::json SquaresMesh(int elements, const std::vector<int>& ids = {0});
[[nodiscard]] nlohmann::json Squares(int elements, const std::vector<int>& ids = {0});

/// A list of that many bitmaps without files.
[[nodiscard]] nlohmann::json Bitmaps(int count);
/// A MultiTexture over `maps` bitmaps, and a CoronaMultiMap whose switches are all off.
[[nodiscard]] nlohmann::json MultiTexture(int maps, int by, int seed = 7);
[[nodiscard]] nlohmann::json
CoronaMultiMap(int maps, const nlohmann::json& switches = nlohmann::json::object());
/// A material that shows the map as its base colour.
[[nodiscard]] nlohmann::json Shows(const nlohmann::json& map);

/// Bakes the open scene; gives the lines that it logged, without "[Brimwave VC] ", which every
/// one of them must begin with.
std::vector<std::wstring> Bake();

/// The mesh that the node shows; null when it is none.
[[nodiscard]] Mesh* ShownMesh(INode& node);
/// The colour of each face as three numbers of 8 bits; a face whose corners differ fails the test.
struct Bytes {
    int choice = -1, count = -1, variation = -1;
    friend bool operator==(const Bytes&, const Bytes&) = default;
};
[[nodiscard]] std::vector<Bytes> FaceColors(INode& node);
/// The choice of each face as a reader decodes it; -1 for none.
[[nodiscard]] std::vector<int> FaceChoices(INode& node);

} // namespace brimwave
