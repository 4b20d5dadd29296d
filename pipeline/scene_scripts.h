#pragma once
#include <cstdint>
#include <string_view>

namespace brimwave {

/// Makes a mesh twin of every renderable spline, which takes the spline's name while the spline
/// itself gets a suffix. Returns how many; 0 when the script did not run or gave no count.
[[nodiscard]] std::int32_t RunSplineCopies();

/// Deletes the twins and gives the splines their names back.
void RestoreSplineCopies();

/// Ungroups all groups and turns all geometry into Editable Polys with reset transforms. Cannot
/// be undone. The host reports a script error by itself.
void BakeGeometry();

/// The spline twins of one export, removed again when this goes.
class SplineTwins {
  public:
    SplineTwins() : count_(RunSplineCopies()) {}
    SplineTwins(const SplineTwins&) = delete;
    SplineTwins& operator=(const SplineTwins&) = delete;
    ~SplineTwins() {
        if (count_ > 0)
            RestoreSplineCopies();
    }

  private:
    std::int32_t count_;
};

} // namespace brimwave
