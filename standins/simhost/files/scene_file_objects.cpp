// What objects have beside parameters: meshes, splines, lenses, stacks.
#include "simhost/files/scene_file_loader.h"

namespace simhost {

namespace {

Point3 ReadPoint3Or(const JsonView& view, const char* member, const Point3& otherwise) {
    const auto point = view.Find(member);
    return point ? ReadPoint3(*point) : otherwise;
}

Spline ReadSpline(const JsonView& view) {
    view.OnlyMembers({"points", "knots", "closed", "steps"});
    Spline spline;
    view.Read("closed", spline.closed);
    view.Read("steps", spline.steps);
    if (spline.steps < 0 || spline.steps > 100)
        view.Member("steps").Expected("a number of steps from 0 to 100");
    if (view.Has("points") == view.Has("knots"))
        view.Complain("a spline has either \"points\" or \"knots\"");
    view.ForElementsOf("points", [&](const JsonView& point) {
        const Point3 p = ReadPoint3(point);
        spline.knots.push_back({p, p, p});
    });
    view.ForElementsOf("knots", [&](const JsonView& knot) {
        knot.OnlyMembers({"p", "in", "out"});
        const Point3 p = ReadPoint3(knot.Member("p"));
        spline.knots.push_back({p, ReadPoint3Or(knot, "in", p), ReadPoint3Or(knot, "out", p)});
    });
    return spline;
}

void ReadLens(const JsonView& view, SceneCamera::Lens& lens) {
    view.OnlyMembers({"fov", "ortho", "target_distance", "manual_clip", "near", "far"});
    view.Read("fov", lens.fov);
    view.Read("ortho", lens.ortho);
    view.Read("target_distance", lens.targetDistance);
    view.Read("manual_clip", lens.manualClip);
    view.Read("near", lens.nearClip);
    view.Read("far", lens.farClip);
}

/// The thing as the class that the member is for; another class is a fault.
template <class T>
T& Needed(const JsonView& member, Entity& entity) {
    auto* thing = dynamic_cast<T*>(&entity);
    if (!thing)
        member.Complain("objects of this class do not have this");
    return *thing;
}

void FillMesh(const JsonView& view, Entity& entity) {
    if (auto* mesh = dynamic_cast<SceneMesh*>(&entity)) {
        ReadMesh(view, mesh->mesh);
        return;
    }
    auto& geometry = Needed<SceneGeometry>(view, entity);
    geometry.ownMesh = std::make_unique<Mesh>();
    ReadMesh(view, *geometry.ownMesh);
}

} // namespace

void SceneLoader::FillObject(const JsonView& entry, const Made& made) {
    if (auto* stack = dynamic_cast<DerivedObject*>(made.thing)) {
        if (const auto base = entry.Find("base")) {
            stack->SetBase(ResolveObject(*base));
            ReadFaults(entry, stack->faults);
        }
        FillStack(entry, "modifiers", *stack, Context::Modifier);
    }
    for (const char* member : {"mesh", "splines", "camera", "box", "use_light"})
        if (entry.Has(member) && !made.entity)
            entry.Complain("a stack on another object has only \"base\" and \"modifiers\"");
    if (const auto mesh = entry.Find("mesh"))
        FillMesh(*mesh, *made.entity);
    if (const auto list = entry.Find("splines")) {
        list->Array();
        auto& shape = Needed<SceneShape>(*list, *made.entity);
        list->ForElements(
            [&](const JsonView& spline) { shape.splines.push_back(ReadSpline(spline)); });
    }
    if (const auto camera = entry.Find("camera"))
        ReadLens(*camera, Needed<SceneCamera>(*camera, *made.entity).lens);
    if (const auto box = entry.Find("box")) {
        box->Array(2);
        auto& helper = Needed<SceneHelper>(*box, *made.entity);
        helper.boxMin = ReadPoint3(box->Element(0));
        helper.boxMax = ReadPoint3(box->Element(1));
    }
    if (const auto on = entry.Find("use_light"))
        on->Read(Needed<SceneLight>(*on, *made.entity).useLight);
}

void SceneLoader::FillStack(const JsonView& entry, const char* member, DerivedObject& stack,
                            Context context) {
    entry.ForElementsOf(member, [&](const JsonView& element) {
        if (SceneModifier* modifier = ResolveModifier(element, context))
            stack.AddModifier(modifier, -1);
        else
            element.Complain("this is no modifier");
    });
}

} // namespace simhost
