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
    Object,
};

/// A script's value: small ones inline, all others shared by reference as the language asks.
class Value {
  public:
    Value() : whole_(0) {}
    Value(ObjectRef object) // NOLINT: every object is a value
        : type_(object ? Type::Object : Type::Undefined), whole_(0), object_(std::move(object)) {}

    static Value Unsupplied() { return {Type::Unsupplied, 0}; }
    static Value Ok() { return {Type::Ok, 0}; }
    static Value DontCollect() { return {Type::DontCollect, 0}; }
    static Value Bool(bool value) { return {Type::Boolean, value}; }
    static Value Integer(int32_t value) { return {Type::Integer, value}; }
    static Value Count(size_t count) { return Integer(static_cast<int32_t>(count)); }
    static Value Integer64(int64_t value) { return {Type::Integer64, value}; }
    static Value IntegerPtr(int64_t value) { return {Type::IntegerPtr, value}; }
    /// `type`: one of the whole ones. What does not fit wraps around, as the host's numbers do.
    static Value Whole(Type type, int64_t value) {
        return {type, type == Type::Integer ? static_cast<int32_t>(value) : value};
    }
    static Value Float(float value) {
        Value made(Type::Float, 0);
        made.real_ = value;
        return made;
    }

    [[nodiscard]] Type GetType() const { return type_; }
    [[nodiscard]] bool Is(Type type) const { return type_ == type; }
    [[nodiscard]] bool IsUndefined() const { return type_ == Type::Undefined; }
    [[nodiscard]] bool IsWhole() const {
        return type_ == Type::Integer || type_ == Type::Integer64 || type_ == Type::IntegerPtr;
    }
    [[nodiscard]] bool IsNumber() const { return IsWhole() || type_ == Type::Float; }

    /// Valid for the types named only; others give a meaningless number.
    [[nodiscard]] bool AsBool() const { return whole_ != 0; } // Boolean
    [[nodiscard]] int64_t AsWhole() const { return whole_; }  // whole numbers
    [[nodiscard]] double AsReal() const {                     // numbers
        return IsWhole() ? static_cast<double>(whole_) : static_cast<double>(real_);
    }
    [[nodiscard]] const ObjectRef& AsObject() const { return object_; } // null unless Object

    /// The object when it is of class T, else null.
    template <class T>
    [[nodiscard]] T* As() const {
        return dynamic_cast<T*>(object_.get());
    }

  private:
    Value(Type type, int64_t whole) : type_(type), whole_(whole) {}

    Type type_ = Type::Undefined;
    union {
        int64_t whole_;
        float real_;
    };
    ObjectRef object_;
};

} // namespace simhost::script
