#pragma once
// Memory of script values: a meter with a limit, and the clearing of reference cycles, which
// shared ownership alone would keep for ever.
#include <cstddef>
#include <vector>

#include "simhost/script/value.h"

namespace simhost::script {

/// Bytes that live script values hold. One script engine runs at a time, on one thread.
class MemoryMeter {
  public:
    /// Throws ScriptError (Limit) when the sum would exceed the limit.
    static void Add(size_t bytes);
    static void Remove(size_t bytes) noexcept { live_ -= bytes; }
    static void SetLimit(size_t bytes) { limit_ = bytes; }
    [[nodiscard]] static size_t Live() { return live_; }

  private:
    inline static size_t live_ = 0;
    inline static size_t limit_ = SIZE_MAX;
};

/// A share of the meter that is given back with the object that holds it.
class MemoryShare {
  public:
    MemoryShare() = default;
    ~MemoryShare() { MemoryMeter::Remove(bytes_); }
    MemoryShare(const MemoryShare&) = delete;
    MemoryShare& operator=(const MemoryShare&) = delete;

    void Set(size_t bytes) {
        if (bytes > bytes_)
            MemoryMeter::Add(bytes - bytes_);
        else
            MemoryMeter::Remove(bytes_ - bytes);
        bytes_ = bytes;
    }

  private:
    size_t bytes_ = 0;
};

class Marker;

/// What can hold references to other values, and so be part of a cycle.
class Traceable {
  public:
    Traceable();
    virtual ~Traceable();
    Traceable(const Traceable&) = delete;
    Traceable& operator=(const Traceable&) = delete;

    virtual void Trace(Marker& marker) const = 0;
    /// Moves every reference it holds into `garbage`; nothing may be destroyed meanwhile.
    virtual void DropReferences(std::vector<Value>& garbage) = 0;

  private:
    friend class Marker;
    friend void ClearUnreachable(const std::vector<Value>& roots);
    mutable bool marked_ = false;
    size_t index_ = 0; // in the list of all
};

/// Visits what is reachable, without recursion.
class Marker {
  public:
    void Visit(const Value& value);
    void Visit(const Traceable* traceable);

  private:
    friend void ClearUnreachable(const std::vector<Value>& roots);
    void Run();
    std::vector<const Traceable*> open_;
};

/// Clears every traceable object that no root leads to. To be called while no script runs:
/// values that only the C++ stack holds count as unreachable.
void ClearUnreachable(const std::vector<Value>& roots);

/// Destroys values one after the other where their destructors would call each other: a list of a
/// million lists inside each other must not use up the machine's stack.
void ReleaseValues(std::vector<Value>&& values) noexcept;

} // namespace simhost::script
