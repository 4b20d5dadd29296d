#pragma once
// Memory of script values: a meter with a limit, and the end of values that hold each other.
#include <cstddef>
#include <cstdint>
#include <vector>

#include "simhost/script/object.h"

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

/// A value that holds others. Those that hold each other in circles stay as long as the engine.
class Container : public Object {
  public:
    Container();
    ~Container() override;
    /// The engine that runs, and to which new containers belong.
    inline static const Interpreter* engine = nullptr;
    /// Empties all that are left of an engine.
    static void EmptyAllOf(const Interpreter* owner);

  protected:
    /// Destroys values one after the other where their destructors would call each other: a list
    /// of a million lists inside each other must not use up the machine's stack.
    static void Release(std::vector<Value>&& values) noexcept;

  private:
    virtual std::vector<Value> TakeValues() = 0;
    const Interpreter* owner_ = engine;
    size_t index_; // in the list of all
};

} // namespace simhost::script
