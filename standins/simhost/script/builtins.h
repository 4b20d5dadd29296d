#pragma once
// The global names that every script sees.

namespace simhost::script {

class Interpreter;

/// All of those below.
void RegisterBuiltins(Interpreter& interpreter);

void RegisterValues(Interpreter& interpreter);  // classes, conversions, class questions
void RegisterMath(Interpreter& interpreter);    // numbers, points, random, bits
void RegisterStrings(Interpreter& interpreter); // strings, patterns, names
void RegisterArrays(Interpreter& interpreter);  // arrays, sorting, bit arrays
void RegisterFiles(Interpreter& interpreter);   // file names, folders, fileIn
void RegisterStreams(Interpreter& interpreter); // print, format, text files
void RegisterSystem(Interpreter& interpreter);  // errors, environment, version, time

} // namespace simhost::script
