#pragma once
#include <cstdint>

namespace simhost {

/// Ids of the objects of one file; 0 is the scene's root, 1 the document.
class FbxIds {
  public:
    [[nodiscard]] std::int64_t Next() { return ++last_; }

  private:
    std::int64_t last_ = 999'999;
};

} // namespace simhost
