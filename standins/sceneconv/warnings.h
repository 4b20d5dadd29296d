// What the converter says beside its result: counted, each text once.
#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace sceneconv {

/// The one thing that stopped a conversion; the text is a complete line for the user.
class ConvertError : public std::runtime_error {
  public:
    ConvertError(const std::filesystem::path& file, const std::string& what)
        : std::runtime_error(file.string() + ": " + what) {}
};

class Warnings {
  public:
    void Add(const std::string& text) {
        const auto [place, isNew] = counts_.try_emplace(text, 0U);
        ++place->second;
        if (isNew)
            order_.push_back(text);
    }

    /// One line a text in the order of first appearance, with a count when it came up repeatedly.
    [[nodiscard]] std::vector<std::string> Lines() const {
        std::vector<std::string> lines;
        for (const std::string& text : order_) {
            const std::size_t count = counts_.at(text);
            lines.push_back(count == 1 ? text : text + " (" + std::to_string(count) + " times)");
        }
        return lines;
    }

  private:
    std::map<std::string, std::size_t> counts_;
    std::vector<std::string> order_;
};

} // namespace sceneconv
