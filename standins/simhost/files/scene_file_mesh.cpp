// Meshes of the scene file.
#include "simhost/files/scene_file_loader.h"

#include <cstring>

namespace simhost {

namespace {

/// Blanks are skipped; null for any other letter outside of the alphabet.
std::optional<std::string> DecodeBase64(std::string_view text) {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr std::string_view blanks = " \n\r\t";
    std::string bytes;
    std::uint32_t bits = 0;
    int count = 0; // of bits that stand there
    bool ended = false;
    for (const char c : text) {
        if (blanks.find(c) != std::string_view::npos)
            continue;
        if (c == '=') {
            ended = true;
            continue;
        }
        const size_t digit = alphabet.find(c);
        if (digit == std::string_view::npos || ended)
            return std::nullopt;
        bits = (bits << 6) | static_cast<std::uint32_t>(digit);
        count += 6;
        if (count >= 8) {
            count -= 8;
            bytes += static_cast<char>(bits >> count);
        }
    }
    return count == 6 ? std::nullopt : std::optional(std::move(bytes));
}

/// Numbers of a list in one of its three forms. `group` is how many stood together in a grouped
/// one, 0 when the list does not show it.
template <class T>
struct Numbers {
    std::vector<T> values;
    size_t group = 0;
};

template <class T>
void FromBase64(const JsonView& view, std::vector<T>& values) {
    view.OnlyMembers({"base64"});
    const JsonView text = view.Member("base64");
    const auto bytes = DecodeBase64(text.Utf8());
    if (!bytes || bytes->size() % sizeof(T) != 0)
        text.Expected("base64 of numbers of " + std::to_string(sizeof(T)) + " bytes");
    values.resize(bytes->size() / sizeof(T));
    if (!values.empty())
        std::memcpy(values.data(), bytes->data(), bytes->size());
}

/// `take(view)` reads one number.
template <class T, class Take>
Numbers<T> ReadNumbers(const JsonView& view, Take take) {
    static_assert(sizeof(T) == 4);
    Numbers<T> out;
    if (view.IsObject()) {
        FromBase64(view, out.values);
        return out;
    }
    view.Array();
    const size_t count = view.Size();
    if (count > 0 && view.Element(0).IsArray()) {
        out.group = view.Element(0).Size();
        for (size_t i = 0; i < count; ++i) {
            const JsonView row = view.Element(i);
            row.Array(out.group);
            for (size_t k = 0; k < out.group; ++k)
                out.values.push_back(take(row.Element(k)));
        }
        return out;
    }
    out.values.reserve(count);
    for (size_t i = 0; i < count; ++i)
        out.values.push_back(take(view.Element(i)));
    return out;
}

Numbers<float> ReadFloats(const JsonView& view) {
    return ReadNumbers<float>(view, [](const JsonView& v) { return v.Number(); });
}

Numbers<std::uint32_t> ReadIndices(const JsonView& view) {
    return ReadNumbers<std::uint32_t>(view, [](const JsonView& v) { return v.Unsigned(); });
}

/// A list of triples, flat or grouped.
std::vector<Point3> ReadPoints(const JsonView& view, size_t size = 3) {
    const Numbers<float> numbers = ReadFloats(view);
    if (numbers.group)
        size = numbers.group;
    if ((size != 2 && size != 3) || numbers.values.size() % size != 0)
        view.Expected("a list of groups of " + std::to_string(size) + " numbers");
    std::vector<Point3> points(numbers.values.size() / size);
    for (size_t i = 0; i < points.size(); ++i)
        for (size_t k = 0; k < size; ++k)
            points[i][static_cast<int>(k)] = numbers.values[i * size + k];
    return points;
}

/// Three indices a face, each below `limit`. `faces` 0 takes any number of faces.
std::vector<std::uint32_t> ReadTriangles(const JsonView& view, size_t limit, size_t faces) {
    std::vector<std::uint32_t> indices = ReadIndices(view).values;
    if (indices.size() % 3 != 0 || (faces && indices.size() != 3 * faces))
        view.Expected(faces ? "three indices for each of " + std::to_string(faces) + " faces"
                            : "three indices a face");
    for (size_t i = 0; i < indices.size(); ++i)
        if (indices[i] >= limit)
            view.Complain("index " + std::to_string(indices[i]) + " of face " +
                          std::to_string(i / 3) + " is outside of the " + std::to_string(limit) +
                          " values");
    return indices;
}

/// One integer a face, or one for all.
template <class Apply>
void ForFaces(const JsonView& mesh, const char* member, int faces, Apply apply) {
    if (!mesh.Has(member))
        return;
    const JsonView view = mesh.Member(member);
    if (view.Raw().is_number()) {
        const std::uint32_t value = view.Unsigned();
        for (int i = 0; i < faces; ++i)
            apply(i, value);
        return;
    }
    const std::vector<std::uint32_t> values = ReadIndices(view).values;
    if (values.size() != static_cast<size_t>(faces))
        view.Expected("one integer for each of " + std::to_string(faces) + " faces");
    for (int i = 0; i < faces; ++i)
        apply(i, values[static_cast<size_t>(i)]);
}

/// A mapping channel: {"values", "size", "triangles"}.
void ReadChannel(const JsonView& view, int channel, size_t size, Mesh& mesh) {
    view.OnlyMembers({"values", "size", "triangles"});
    if (view.Has("size"))
        size = view.Member("size").Unsigned();
    const std::vector<Point3> values = ReadPoints(view.Member("values"), size);
    mesh.setMapSupport(channel);
    MeshMap& map = mesh.Map(channel);
    map.setNumVerts(static_cast<int>(values.size()));
    std::copy(values.begin(), values.end(), map.tv);
    map.setNumFaces(mesh.getNumFaces());
    const auto faces = static_cast<size_t>(mesh.getNumFaces());
    if (view.Has("triangles")) {
        const auto indices = ReadTriangles(view.Member("triangles"), values.size(), faces);
        for (size_t i = 0; i < indices.size() / 3; ++i)
            map.tf[i].setTVerts(indices[3 * i], indices[3 * i + 1], indices[3 * i + 2]);
        return;
    }
    if (values.size() != static_cast<size_t>(mesh.getNumVerts()))
        view.Member("values").Expected("one value for each of " +
                                       std::to_string(mesh.getNumVerts()) +
                                       " vertices, or \"triangles\" of its own");
    for (size_t i = 0; i < faces; ++i)
        map.tf[i].setTVerts(mesh.faces[i].v[0], mesh.faces[i].v[1], mesh.faces[i].v[2]);
}

void ReadNormals(const JsonView& view, Mesh& mesh) {
    view.OnlyMembers({"values", "triangles"});
    const std::vector<Point3> values = ReadPoints(view.Member("values"));
    const auto faces = static_cast<size_t>(mesh.getNumFaces());
    std::vector<std::uint32_t> indices;
    if (view.Has("triangles")) {
        indices = ReadTriangles(view.Member("triangles"), values.size(), faces);
    } else {
        if (values.size() != static_cast<size_t>(mesh.getNumVerts()))
            view.Member("values").Expected("one normal for each vertex, or \"triangles\"");
        for (size_t i = 0; i < faces; ++i)
            indices.insert(indices.end(), mesh.faces[i].v, mesh.faces[i].v + 3);
    }
    mesh.SpecifyNormals();
    MeshNormalSpec& spec = *mesh.GetSpecifiedNormals();
    spec.SetNumNormals(static_cast<int>(values.size()));
    for (size_t i = 0; i < values.size(); ++i)
        spec.Normal(static_cast<int>(i)) = values[i];
    spec.SetNumFaces(static_cast<int>(faces));
    for (size_t i = 0; i < indices.size(); ++i)
        spec.Face(static_cast<int>(i / 3))
            .SetNormalID(static_cast<int>(i % 3), static_cast<int>(indices[i]));
}

void ReadChannels(const JsonView& view, Mesh& mesh) {
    if (view.Has("uvs"))
        view.Member("uvs").ForMembers([&](const std::string& key, const JsonView& channel) {
            const bool digits = !key.empty() && key.size() < 3 &&
                                key.find_first_not_of("0123456789") == std::string::npos &&
                                key != "0";
            if (!digits)
                channel.Complain("expected a channel from 1 to 99");
            ReadChannel(channel, std::stoi(key), 2, mesh);
        });
    for (const auto& [member, channel] :
         {std::pair("colors", 0), std::pair("alpha", MAP_ALPHA), std::pair("shading", MAP_SHADING)})
        if (view.Has(member))
            ReadChannel(view.Member(member), channel, 3, mesh);
}

} // namespace

void ReadMesh(const JsonView& view, Mesh& mesh) {
    view.OnlyMembers({"positions", "triangles", "material_ids", "smoothing_groups", "normals",
                      "uvs", "colors", "alpha", "shading", "visible_edges"});
    const std::vector<Point3> positions = ReadPoints(view.Member("positions"));
    mesh.setNumVerts(static_cast<int>(positions.size()));
    std::copy(positions.begin(), positions.end(), mesh.verts);
    const auto indices = ReadTriangles(view.Member("triangles"), positions.size(), 0);
    const int faces = static_cast<int>(indices.size() / 3);
    mesh.setNumFaces(faces);
    for (int i = 0; i < faces; ++i) {
        const std::uint32_t* v = &indices[3 * static_cast<size_t>(i)];
        mesh.faces[i].setVerts(v[0], v[1], v[2]);
        mesh.faces[i].setSmGroup(1);
    }
    ForFaces(view, "material_ids", faces, [&](int i, std::uint32_t value) {
        mesh.setFaceMtlIndex(i, static_cast<MtlID>(value));
    });
    ForFaces(view, "smoothing_groups", faces,
             [&](int i, std::uint32_t value) { mesh.faces[i].setSmGroup(value); });
    ForFaces(view, "visible_edges", faces, [&](int i, std::uint32_t value) {
        mesh.faces[i].flags = value & (EDGE_VIS1 | EDGE_VIS2 | EDGE_VIS3);
    });
    if (view.Has("normals"))
        ReadNormals(view.Member("normals"), mesh);
    ReadChannels(view, mesh);
}

} // namespace simhost
