#pragma once
// The global names that every script sees.

namespace simhost::script {

class Interpreter;

/// All of those below.
void RegisterBuiltins(Interpreter& interpreter);

void RegisterValues(Interpreter& interpreter);  // constants, classes, conversions, properties
void RegisterStrings(Interpreter& interpreter); // strings, patterns, names
void RegisterArrays(Interpreter& interpreter);  // arrays
void RegisterSystem(Interpreter& interpreter);  // numbers, errors, environment
void RegisterFiles(Interpreter& interpreter);   // folders, fileIn, print, format, text files

} // namespace simhost::script
