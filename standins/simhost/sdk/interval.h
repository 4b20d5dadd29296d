#pragma once
#include "maxtypes.h"

/// A range of times in which a value holds.
class Interval {
  public:
    Interval() = default; // empty
    Interval(TimeValue start, TimeValue end) : start_(start), end_(end) {}
    [[nodiscard]] TimeValue Start() const { return start_; }
    [[nodiscard]] TimeValue End() const { return end_; }
    void SetInfinite() { *this = Interval(TIME_NegInfinity, TIME_PosInfinity); }
    [[nodiscard]] int InInterval(TimeValue t) const { return start_ <= t && t <= end_; }

  private:
    TimeValue start_ = TIME_PosInfinity;
    TimeValue end_ = TIME_NegInfinity;
};

#define FOREVER Interval(TIME_NegInfinity, TIME_PosInfinity)
