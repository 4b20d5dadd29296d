#pragma once
#include <chrono>
#include <cstddef>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace devservice {

/// What goes wrong with an exchange. The members combine; an unset one leaves the ordinary
/// behaviour. With `status`, `body`, `redirect` or `raw` the ordinary answer is replaced and
/// nothing is stored or charged; the others let the service do its work and spoil only the
/// transport.
struct Fault {
    enum class On { Any, Balance, Jobs };
    enum class Close { No, BeforeHeader, InHeader, InBody };

    On on = On::Any;
    std::optional<int> times{}; ///< how many exchanges; nothing: every one

    std::optional<int> status{};
    std::optional<std::string> body{}; ///< bytes, not necessarily UTF-8
    std::string redirect{};   ///< Location of a redirect (status 302 unless `status` is set)
    std::size_t bodySize = 0; ///< the answer's body is padded with blanks to this size

    std::string raw{};                  ///< sent in place of the whole answer, head included
    Close close = Close::No;            ///< where the connection breaks off
    bool reset = false;                 ///< break off with a reset, not an orderly end
    std::chrono::milliseconds delay{0}; ///< before the answer
    std::size_t pieceBytes = 0;         ///< the answer comes in pieces of this size ...
    std::chrono::milliseconds pause{0}; ///< ... with this pause between them
    std::size_t readBytesPerSecond = 0; ///< how fast the request is taken in; 0: at once

    [[nodiscard]] bool ReplacesAnswer() const {
        return status || body || !redirect.empty() || !raw.empty();
    }
};

/// The faults ordered for each token. Safe to use from several threads.
class FaultBoard {
  public:
    void Add(const std::string& token, Fault fault);
    void Clear();
    /// The first fault that fits an exchange, used up by one; nothing when all shall go well.
    [[nodiscard]] std::optional<Fault> Take(const std::string& token, Fault::On exchange);

  private:
    std::mutex mutex_;
    std::map<std::string, std::vector<Fault>> faults_;
};

} // namespace devservice
