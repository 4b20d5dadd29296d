#pragma once
// The global names through which scripts reach the scene and the host.
#include <functional>
#include <string_view>

namespace simhost::script {

class Interpreter;

/// All of those below.
void RegisterHost(Interpreter& interpreter);

void RegisterClasses(Interpreter& interpreter);   // the catalogue's classes, creation
void RegisterNodes(Interpreter& interpreter);     // objects, rootNode, deleting, groups, selection
void RegisterGeometry(Interpreter& interpreter);  // conversions, transforms, face counts
void RegisterMaterials(Interpreter& interpreter); // sub-materials, sub-maps, handles
void RegisterServices(Interpreter& interpreter);  // renderers, colour pipeline, version, redraw

/// Sees the text of every script that the host is given, before it runs; empty: nobody does.
std::function<void(std::wstring_view)>& ScriptObserver();

} // namespace simhost::script
