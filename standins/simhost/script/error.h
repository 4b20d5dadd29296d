#pragma once
#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace simhost::script {

/// Where in a script: both count from 1; columns count UTF-16 units.
struct Position {
    uint32_t line = 0;
    uint32_t column = 0;
};

/// What a script can fail with. `message` is the host's text without its leading "-- ".
class ScriptError : public std::exception {
  public:
    enum class Kind {
        Syntax,  // the text is no script
        Compile, // it is one, but breaks a rule that is checked before it runs
        Runtime, // thrown while running; a script's `catch` receives it
        Limit,   // too many steps or too much memory; ends the run, no `catch` receives it
    };

    ScriptError(Kind kind, std::wstring message, Position position = {})
        : kind_(kind), message_(std::move(message)), position_(position) {}

    [[nodiscard]] Kind GetKind() const { return kind_; }
    [[nodiscard]] const std::wstring& Message() const { return message_; }
    [[nodiscard]] Position Where() const { return position_; }
    [[nodiscard]] const char* what() const noexcept override { return "MAXScript error"; }

    /// A place for errors that were raised by code that knows none.
    void SetPositionIfUnknown(Position position) {
        if (position_.line == 0)
            position_ = position;
    }

  private:
    Kind kind_;
    std::wstring message_;
    Position position_;
};

} // namespace simhost::script
