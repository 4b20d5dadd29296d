#pragma once
#include <string>
#include <string_view>

namespace brimwave {

/// An embedded script as the host takes it. Our scripts are plain ASCII.
[[nodiscard]] inline std::wstring ScriptText(std::string_view script) {
    return {script.begin(), script.end()};
}

} // namespace brimwave
