#pragma once
#include "maxtypes.h"

#include <exception>
#include <vector>

/// Raised by Tab for an index outside of it.
class TabOutOfRangeException : public std::exception {
  public:
    [[nodiscard]] const char* what() const noexcept override { return "Tab index out of range"; }
};

/// The host's growable array.
template <class T>
class Tab {
  public:
    [[nodiscard]] int Count() const { return static_cast<int>(items_.size()); }
    T& operator[](int i) {
        if (i < 0 || i >= Count())
            throw TabOutOfRangeException();
        return items_[static_cast<size_t>(i)];
    }

  private:
    std::vector<T> items_;
};
