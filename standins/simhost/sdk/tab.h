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
    void SetCount(int count) { items_.resize(static_cast<size_t>(count)); }
    int Append(int count, const T* items, int /*allocExtra*/ = 0) {
        const int first = Count();
        items_.insert(items_.end(), items, items + count);
        return first;
    }
    void ZeroCount() { items_.clear(); }
    T& operator[](int i) { return items_[Checked(i)]; }
    const T& operator[](int i) const { return items_[Checked(i)]; }

  private:
    [[nodiscard]] size_t Checked(int i) const {
        if (i < 0 || i >= Count())
            throw TabOutOfRangeException();
        return static_cast<size_t>(i);
    }
    std::vector<T> items_;
};
