#pragma once
// The global names through which scripts reach the scene and the host.

namespace simhost::script {

class Interpreter;

/// All of those below.
void RegisterHost(Interpreter& interpreter);

void RegisterClasses(Interpreter& interpreter);   // the catalogue's classes, creation
void RegisterScene(Interpreter& interpreter);     // objects, rootNode, selection, sceneMaterials
void RegisterNodes(Interpreter& interpreter);     // delete, isValidNode, hide, user properties
void RegisterGeometry(Interpreter& interpreter);  // conversions, stacks, transforms
void RegisterGroups(Interpreter& interpreter);    // group, ungroup and questions about groups
void RegisterMaterials(Interpreter& interpreter); // sub-materials and sub-maps
void RegisterHandles(Interpreter& interpreter);   // getHandleByAnim and its way back
void RegisterServices(Interpreter& interpreter);  // renderers, colour pipeline, version, redraw

} // namespace simhost::script
