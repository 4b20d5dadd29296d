// What objects have beside parameters: meshes, splines, lenses, stacks.
#include "simhost/files/scene_file_loader.h"

namespace simhost {

namespace {

Spline ReadSpline(const JsonView& view) {
    view.OnlyMembers({"points", "knots", "closed", "steps"});
    Spline spline;
    if (view.Has("closed"))
        spline.closed = view.Member("closed").Bool();
    if (view.Has("steps")) {
        const JsonView steps = view.Member("steps");
        spline.steps = steps.Integer();
        if (spline.steps < 0 || spline.steps > 100)
            steps.Expected("a number of steps from 0 to 100");
    }
    if (view.Has("points") == view.Has("knots"))
        view.Complain("a spline has either \"points\" or \"knots\"");
    if (view.Has("points")) {
        const JsonView points = view.Member("points");
        points.Array();
        for (size_t i = 0; i < points.Size(); ++i) {
            const Point3 p = ReadPoint3(points.Element(i));
            spline.knots.push_back({p, p, p});
        }
        return spline;
    }
    const JsonView knots = view.Member("knots");
    knots.Array();
    for (size_t i = 0; i < knots.Size(); ++i) {
        const JsonView knot = knots.Element(i);
        knot.OnlyMembers({"p", "in", "out"});
        const Point3 p = ReadPoint3(knot.Member("p"));
        spline.knots.push_back({p, knot.Has("in") ? ReadPoint3(knot.Member("in")) : p,
                                knot.Has("out") ? ReadPoint3(knot.Member("out")) : p});
    }
    return spline;
}

void ReadLens(const JsonView& view, SceneCamera::Lens& lens) {
    view.OnlyMembers({"fov", "ortho", "target_distance", "manual_clip", "near", "far"});
    if (view.Has("fov"))
        lens.fov = view.Member("fov").Number();
    if (view.Has("ortho"))
        lens.ortho = view.Member("ortho").Bool();
    if (view.Has("target_distance"))
        lens.targetDistance = view.Member("target_distance").Number();
    if (view.Has("manual_clip"))
        lens.manualClip = view.Member("manual_clip").Bool();
    if (view.Has("near"))
        lens.nearClip = view.Member("near").Number();
    if (view.Has("far"))
        lens.farClip = view.Member("far").Number();
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
    auto* stack = dynamic_cast<DerivedObject*>(made.thing);
    if (stack) {
        if (entry.Has("base")) {
            stack->SetBase(ResolveObject(entry.Member("base")));
            ReadFaults(entry, stack->faults);
        }
        if (entry.Has("modifiers"))
            FillStack(entry.Member("modifiers"), *stack, Context::Modifier);
    }
    for (const char* member : {"mesh", "splines", "camera", "box", "use_light"})
        if (entry.Has(member) && !made.entity)
            entry.Complain("a stack on another object has only \"base\" and \"modifiers\"");
    if (entry.Has("mesh"))
        FillMesh(entry.Member("mesh"), *made.entity);
    if (entry.Has("splines")) {
        const JsonView list = entry.Member("splines");
        list.Array();
        auto& shape = Needed<SceneShape>(list, *made.entity);
        for (size_t i = 0; i < list.Size(); ++i)
            shape.splines.push_back(ReadSpline(list.Element(i)));
    }
    if (entry.Has("camera")) {
        const JsonView view = entry.Member("camera");
        ReadLens(view, Needed<SceneCamera>(view, *made.entity).lens);
    }
    if (entry.Has("box")) {
        const JsonView view = entry.Member("box");
        view.Array(2);
        auto& helper = Needed<SceneHelper>(view, *made.entity);
        helper.boxMin = ReadPoint3(view.Element(0));
        helper.boxMax = ReadPoint3(view.Element(1));
    }
    if (entry.Has("use_light")) {
        const JsonView view = entry.Member("use_light");
        Needed<SceneLight>(view, *made.entity).useLight = view.Bool();
    }
}

void SceneLoader::FillStack(const JsonView& modifiers, DerivedObject& stack, Context context) {
    modifiers.Array();
    for (size_t i = 0; i < modifiers.Size(); ++i) {
        const JsonView element = modifiers.Element(i);
        if (SceneModifier* modifier = ResolveModifier(element, context))
            stack.AddModifier(modifier, -1);
        else
            element.Complain("this is no modifier");
    }
}

} // namespace simhost
