#pragma once
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace simhost {

/// A problem that ends the program; its text is the one line that the user reads.
class StartError : public std::exception {
  public:
    explicit StartError(std::wstring text) : text_(std::move(text)) {}
    [[nodiscard]] const std::wstring& Text() const { return text_; }
    [[nodiscard]] const char* what() const noexcept override { return "start error"; }

  private:
    std::wstring text_;
};

/// The orders of a command line. Paths are Windows paths.
struct Options {
    bool help = false;
    std::wstring scene;  // empty: a new, never saved scene
    std::wstring plugin; // empty: brimwave.dlu beside the program
    std::wstring settingsFolder;
    std::wstring trustedCa; // a PEM file whose certificates are trusted for TLS
    double timeoutSeconds = 300;

    // What is done on the panel, in this order; nothing set leaves it to a person.
    std::optional<std::wstring> token;
    std::optional<std::wstring> folder;
    std::optional<bool> olderTarget; // conversion path A
    std::optional<bool> bake;        // the check box, and the answer to its question
    bool exportAndSend = false;
    std::wstring panelPicture; // PNG
    std::wstring summary;      // JSON

    /// True when the program ends by itself once its orders are carried out.
    [[nodiscard]] bool EndsByItself() const {
        return exportAndSend || !panelPicture.empty() || !summary.empty();
    }
    [[nodiscard]] bool HasOrders() const {
        return EndsByItself() || token || folder || olderTarget || bake;
    }
};

extern const std::wstring_view usageText;

/// Throws StartError for an option that it does not know or a value that makes no sense.
[[nodiscard]] Options ParseOptions(const std::vector<std::wstring>& arguments);

} // namespace simhost
