#pragma once
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simhost/script/value.h"

namespace simhost::script {

class Interpreter;
class Traceable;

/// Builds the text of `x as string`. Stops by itself when values refer to each other in circles.
class Printer {
  public:
    /// `nested`: as an element of something else, where strings stand in quotes.
    void Put(const Value& value, bool nested);
    void Put(std::wstring_view text) { text_ += text; }
    /// A component of a point: six digits, whole numbers bare.
    void PutNumber(double number);
    [[nodiscard]] std::wstring Take() { return std::move(text_); }

  private:
    std::wstring text_;
    int depth_ = 0;
};

/// What a call passes. Keyword names are lower case.
struct Arguments {
    std::vector<Value> items;
    std::vector<std::pair<std::wstring, Value>> keywords;

    /// Null when the call has no such keyword.
    [[nodiscard]] const Value* Keyword(std::wstring_view name) const {
        for (const auto& [key, value] : keywords) {
            if (key == name)
                return &value;
        }
        return nullptr;
    }
};

/// A value on the script heap. The defaults refuse everything: the caller then raises the error
/// that the host prints for an unknown property, a call of something else, and so on.
class Object : public std::enable_shared_from_this<Object> {
  public:
    Object() = default;
    virtual ~Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    [[nodiscard]] virtual const Traceable* AsTraceable() const { return nullptr; }
    virtual void Print(Printer& printer, bool nested) const = 0;
    /// Name of the class that `classOf` answers.
    [[nodiscard]] virtual std::wstring ClassName() const = 0;
    /// Superclass of that class, for classes that scripts have not met before.
    [[nodiscard]] virtual std::wstring SuperClassName() const { return L"Value"; }
    [[nodiscard]] virtual bool Equals(const Object& other) const { return this == &other; }

    // Property names are lower case. False: no such property.
    virtual bool GetProperty(Interpreter&, const std::wstring& /*name*/, Value& /*result*/) {
        return false;
    }
    virtual bool SetProperty(Interpreter&, const std::wstring& /*name*/, const Value& /*value*/) {
        return false;
    }

    // False: cannot be indexed so.
    virtual bool GetIndex(Interpreter&, const Value& /*index*/, Value& /*result*/) { return false; }
    virtual bool SetIndex(Interpreter&, const Value& /*index*/, const Value& /*value*/) {
        return false;
    }

    /// Collections: whether item `position` (from 0) exists, and the item. Asked anew for every
    /// step of a loop, so that live collections can change meanwhile.
    [[nodiscard]] virtual bool IsCollection() const { return false; }
    virtual bool Item(Interpreter&, size_t /*position*/, Value& /*result*/) { return false; }

    /// What `copy` (or "instance", "reference") makes of it. False: cannot be copied.
    virtual bool Copy(Interpreter&, const std::wstring& /*how*/, Arguments&, Value& /*result*/) {
        return false;
    }
    /// Names for `getPropNames`.
    virtual void PropertyNames(std::vector<std::wstring>& /*names*/) const {}

    /// False: cannot be called.
    virtual bool Call(Interpreter&, Arguments& /*arguments*/, Value& /*result*/) { return false; }
};

} // namespace simhost::script
