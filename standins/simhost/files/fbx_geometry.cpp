#include "simhost/files/fbx_geometry.h"

#include "simhost/files/fbx_normals.h"

#include <algorithm>
#include <cmath>

namespace simhost {

namespace {

using namespace std::string_view_literals;

struct LayerElement {
    std::string type;
    std::int32_t index = 0; // among the elements of its type; also the layer that it stands in
};

double Finite(float v) {
    return std::isfinite(v) ? v : 0;
}

std::int32_t Checked(DWORD index, int count) {
    return index < static_cast<DWORD>(count) ? static_cast<std::int32_t>(index) : 0;
}

void WriteTopology(FbxRecordWriter& w, const Mesh& mesh) {
    std::vector<double> positions;
    positions.reserve(static_cast<std::size_t>(mesh.getNumVerts()) * 3);
    for (int v = 0; v < mesh.getNumVerts(); ++v)
        for (int c = 0; c < 3; ++c)
            positions.push_back(Finite(mesh.verts[v][c]));
    w.Leaf("Vertices", positions);

    std::vector<std::int32_t> corners;
    corners.reserve(static_cast<std::size_t>(mesh.getNumFaces()) * 3);
    for (int f = 0; f < mesh.getNumFaces(); ++f) {
        const Face& face = mesh.faces[f];
        corners.push_back(Checked(face.v[0], mesh.getNumVerts()));
        corners.push_back(Checked(face.v[1], mesh.getNumVerts()));
        corners.push_back(~Checked(face.v[2], mesh.getNumVerts())); // the polygon's last corner
    }
    w.Leaf("PolygonVertexIndex", corners);
    w.Leaf("GeometryVersion", 124);
}

void BeginElement(FbxRecordWriter& w, const LayerElement& element, std::int32_t version,
                  std::string_view name, std::string_view mapping, std::string_view reference) {
    w.Begin(element.type, element.index);
    w.Leaf("Version", version);
    w.Leaf("Name", name);
    w.Leaf("MappingInformationType", mapping);
    w.Leaf("ReferenceInformationType", reference);
}

LayerElement WriteNormals(FbxRecordWriter& w, Mesh& mesh) {
    LayerElement element{"LayerElementNormal", 0};
    BeginElement(w, element, 101, "", "ByPolygonVertex", "Direct");
    w.Leaf("Normals", FbxCornerNormals(mesh));
    w.End();
    return element;
}

LayerElement WriteMaterials(FbxRecordWriter& w, const std::vector<std::int32_t>& materials) {
    LayerElement element{"LayerElementMaterial", 0};
    const bool same = std::all_of(materials.begin(), materials.end(),
                                  [&](std::int32_t m) { return m == materials.front(); });
    BeginElement(w, element, 101, "", same ? "AllSame" : "ByPolygon", "IndexToDirect");
    w.Leaf("Materials", same ? std::vector<std::int32_t>{materials.front()} : materials);
    w.End();
    return element;
}

/// A channel can be written when it has values and a face for each face of the mesh.
bool Usable(Mesh& mesh, int channel) {
    if (!mesh.mapSupport(channel))
        return false;
    const MeshMap& map = mesh.Map(channel);
    return map.getNumVerts() > 0 && map.getNumFaces() >= mesh.getNumFaces();
}

std::vector<std::int32_t> ChannelCorners(const Mesh& mesh, const MeshMap& map) {
    std::vector<std::int32_t> corners;
    corners.reserve(static_cast<std::size_t>(mesh.getNumFaces()) * 3);
    for (int f = 0; f < mesh.getNumFaces(); ++f)
        for (const DWORD index : map.tf[f].t)
            corners.push_back(Checked(index, map.getNumVerts()));
    return corners;
}

LayerElement WriteCoordinates(FbxRecordWriter& w, Mesh& mesh, int channel, std::int32_t index) {
    const MeshMap& map = mesh.Map(channel);
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(map.getNumVerts()) * 2);
    for (int v = 0; v < map.getNumVerts(); ++v) {
        values.push_back(Finite(map.tv[v].x));
        values.push_back(Finite(map.tv[v].y));
    }
    LayerElement element{"LayerElementUV", index};
    BeginElement(w, element, 101, "UVChannel_" + std::to_string(channel), "ByPolygonVertex",
                 "IndexToDirect");
    w.Leaf("UV", values);
    w.Leaf("UVIndex", ChannelCorners(mesh, map));
    w.End();
    return element;
}

/// Colours and alpha have faces of their own; together they are written corner by corner.
std::vector<double> ColoursWithAlpha(Mesh& mesh) {
    const MeshMap& colours = mesh.Map(0);
    const MeshMap& alphas = mesh.Map(MAP_ALPHA);
    const std::vector<std::int32_t> colourCorners = ChannelCorners(mesh, colours);
    const std::vector<std::int32_t> alphaCorners = ChannelCorners(mesh, alphas);
    std::vector<double> values;
    values.reserve(colourCorners.size() * 4);
    for (std::size_t i = 0; i < colourCorners.size(); ++i) {
        for (int c = 0; c < 3; ++c)
            values.push_back(Finite(colours.tv[colourCorners[i]][c]));
        values.push_back(Finite(alphas.tv[alphaCorners[i]].x));
    }
    return values;
}

LayerElement WriteColours(FbxRecordWriter& w, Mesh& mesh) {
    LayerElement element{"LayerElementColor", 0};
    if (Usable(mesh, MAP_ALPHA)) {
        BeginElement(w, element, 101, "VertexColors", "ByPolygonVertex", "Direct");
        w.Leaf("Colors", ColoursWithAlpha(mesh));
        w.End();
        return element;
    }
    const MeshMap& map = mesh.Map(0);
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(map.getNumVerts()) * 4);
    for (int v = 0; v < map.getNumVerts(); ++v) {
        for (int c = 0; c < 3; ++c)
            values.push_back(Finite(map.tv[v][c]));
        values.push_back(1);
    }
    BeginElement(w, element, 101, "VertexColors", "ByPolygonVertex", "IndexToDirect");
    w.Leaf("Colors", values);
    w.Leaf("ColorIndex", ChannelCorners(mesh, map));
    w.End();
    return element;
}

/// Layer i lists the i-th element of every type.
void WriteLayers(FbxRecordWriter& w, const std::vector<LayerElement>& elements) {
    std::int32_t last = 0;
    for (const LayerElement& element : elements)
        last = std::max(last, element.index);
    for (std::int32_t layer = 0; layer <= last; ++layer) {
        w.Begin("Layer", layer);
        w.Leaf("Version", 100);
        for (const LayerElement& element : elements) {
            if (element.index != layer)
                continue;
            w.Begin("LayerElement");
            w.Leaf("Type", element.type);
            w.Leaf("TypedIndex", element.index);
            w.End();
        }
        w.End();
    }
}

} // namespace

void WriteFbxGeometry(FbxRecordWriter& w, std::int64_t id, Mesh& mesh, DWORD wireColor,
                      const std::vector<std::int32_t>& materials) {
    w.Begin("Geometry", id, "\0\x01Geometry"sv, "Mesh");
    WriteFbxProperties(w, {{"Color", FbxTypes::color,
                            FbxVec3{(wireColor & 0xff) / 255.0, (wireColor >> 8 & 0xff) / 255.0,
                                    (wireColor >> 16 & 0xff) / 255.0}}});
    WriteTopology(w, mesh);
    std::vector<LayerElement> elements{WriteNormals(w, mesh)};
    if (!materials.empty())
        elements.push_back(WriteMaterials(w, materials));
    if (Usable(mesh, 0))
        elements.push_back(WriteColours(w, mesh));
    std::int32_t sets = 0;
    for (int channel = 1; channel < mesh.getNumMaps(); ++channel)
        if (Usable(mesh, channel))
            elements.push_back(WriteCoordinates(w, mesh, channel, sets++));
    WriteLayers(w, elements);
    w.End();
}

} // namespace simhost
