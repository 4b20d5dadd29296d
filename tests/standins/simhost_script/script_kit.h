#pragma once
// What the script tests share: engines, results as text, tables of scripts.
#include <filesystem>
#include <ostream>
#include <string>

#include "simhost/script/interpreter.h"

namespace simhost::script {

/// A script engine without a scene, and what its scripts printed.
class Engine {
  public:
    explicit Engine(Limits limits = {});
    /// The last expression's value as it prints in lists (strings in quotes), or "! " and the
    /// error's message.
    std::string Run(std::string_view script);
    [[nodiscard]] std::string TakeOutput() { return std::exchange(output_, {}); }
    [[nodiscard]] Interpreter& Get() { return interpreter_; }

  private:
    std::string output_;
    Interpreter interpreter_;
};

/// The result of a script in an engine of its own.
std::string Result(std::string_view script);

struct Row {
    const char* script;
    const char* result;
};
void PrintTo(const Row& row, std::ostream* out);

/// Runs every row in an engine of its own.
void ExpectResults(std::initializer_list<Row> rows);

/// "ACCEPT", or "line:column message". The letters a to i, s and x are known names there.
std::string Verdict(std::string_view script);

std::string ReadFile(const std::filesystem::path& path);

/// A folder that goes away with the object.
class Folder {
  public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    /// Writes a file and returns its path, with "/".
    std::string Write(const std::string& name, std::string_view bytes) const;
    [[nodiscard]] std::string Path() const { return path_.string(); }

  private:
    std::filesystem::path path_;
};

} // namespace simhost::script
