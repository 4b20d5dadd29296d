#pragma once
#include <stdexcept>
#include <string>

namespace devservice {

/// Something that keeps the service from starting. The text is one line for the person who
/// started it and names the file, port or option.
class StartError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

} // namespace devservice
