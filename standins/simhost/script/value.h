#pragma once
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace simhost::script {

class Object;
using ObjectRef = std::shared_ptr<Object>;

enum class Type : uint8_t {
    Undefined,
    Unsupplied,
    Ok,
    DontCollect,
    Boolean,
    Integer,    // 32 bits
    Integer64,  // prints with L
    IntegerPtr, // prints with P
    Float,      // 32 bits
    Double,
    Time, // in ticks, 4800 a second
    Object,
};

inline constexpr int ticksPerSecond = 4800;

/// A script's value: small ones inline, all others shared by reference as the language asks.
class Value {
  public:
    Value() : integer_(0) {}
    Value(ObjectRef object) // NOLINT: every object is a value
        : type_(object ? Type::Object : Type::Undefined), integer_(0), object_(std::move(object)) {}

    static Value Undefined() { return {}; }
    static Value Unsupplied() { return Value(Type::Unsupplied, int64_t{0}); }
    static Value Ok() { return Value(Type::Ok, int64_t{0}); }
    static Value DontCollect() { return Value(Type::DontCollect, int64_t{0}); }
    static Value Bool(bool value) { return Value(Type::Boolean, int64_t{value}); }
    static Value Integer(int32_t value) { return Value(Type::Integer, int64_t{value}); }
    static Value Integer64(int64_t value) { return Value(Type::Integer64, value); }
    static Value IntegerPtr(int64_t value) { return Value(Type::IntegerPtr, value); }
    static Value Float(float value) { return Value(Type::Float, static_cast<double>(value)); }
    static Value Double(double value) { return Value(Type::Double, value); }
    static Value Time(double ticks) { return Value(Type::Time, ticks); }

    [[nodiscard]] Type GetType() const { return type_; }
    [[nodiscard]] bool Is(Type type) const { return type_ == type; }
    [[nodiscard]] bool IsUndefined() const { return type_ == Type::Undefined; }
    [[nodiscard]] bool IsWhole() const {
        return type_ == Type::Integer || type_ == Type::Integer64 || type_ == Type::IntegerPtr;
    }
    [[nodiscard]] bool IsReal() const { return type_ == Type::Float || type_ == Type::Double; }
    [[nodiscard]] bool IsNumber() const { return IsWhole() || IsReal(); }

    /// Valid for the types named only; others give a meaningless number.
    [[nodiscard]] bool AsBool() const { return integer_ != 0; } // Boolean
    [[nodiscard]] int64_t AsWhole() const { return integer_; }  // whole numbers
    [[nodiscard]] double AsReal() const {                       // numbers and Time
        return IsWhole() ? static_cast<double>(integer_) : real_;
    }
    [[nodiscard]] const ObjectRef& AsObject() const { return object_; } // null unless Object

    /// The object when it is of class T, else null.
    template <class T>
    [[nodiscard]] T* As() const {
        return dynamic_cast<T*>(object_.get());
    }
    template <class T>
    [[nodiscard]] std::shared_ptr<T> Share() const {
        return std::dynamic_pointer_cast<T>(object_);
    }

  private:
    Value(Type type, int64_t integer) : type_(type), integer_(integer) {}
    Value(Type type, double real) : type_(type), real_(real) {}

    Type type_ = Type::Undefined;
    union {
        int64_t integer_;
        double real_;
    };
    ObjectRef object_;
};

} // namespace simhost::script
