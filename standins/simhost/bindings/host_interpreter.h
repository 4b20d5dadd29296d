#pragma once

namespace simhost::script {

class Interpreter;

/// The engine that the host's scripts share; its global variables live as long as the program.
[[nodiscard]] Interpreter& HostInterpreter();

} // namespace simhost::script
