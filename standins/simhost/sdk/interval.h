#pragma once
#include "maxtypes.h"

/// A range of times in which a value holds.
class Interval {
  public:
    Interval() = default; // empty
    Interval(TimeValue start, TimeValue end) : start_(start), end_(end) {}
    [[nodiscard]] TimeValue Start() const { return start_; }
    [[nodiscard]] TimeValue End() const { return end_; }

  private:
    TimeValue start_ = TIME_PosInfinity;
    TimeValue end_ = TIME_NegInfinity;
};

#define FOREVER Interval(TIME_NegInfinity, TIME_PosInfinity)
