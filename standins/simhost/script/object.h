#pragma once
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simhost/script/value.h"

namespace simhost::script {

class Interpreter;
struct Frame;

/// Builds the text of `x as string`. Stops by itself when values refer to each other in circles.
class Printer {
  public:
    /// `nested`: as an element of something else, where strings stand in quotes.
    void Append(const Value& value, bool nested);
    void Append(std::wstring_view text) { text_ += text; }
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
    [[nodiscard]] const Value* FindKeyword(std::wstring_view name) const {
        for (const auto& [key, value] : keywords) {
            if (key == name)
                return &value;
        }
        return nullptr;
    }
};

/// A value that is shared. The defaults refuse everything: the caller then raises the error that
/// the host prints for an unknown property, a call of something else, and so on.
class Object : public std::enable_shared_from_this<Object> {
  public:
    Object() = default;
    virtual ~Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    virtual void Print(Printer& printer, bool nested) const = 0;
    /// Name of the class that `classOf` answers.
    [[nodiscard]] virtual std::wstring ClassName() const = 0;
    /// Superclass of that class, for classes that scripts have not met before.
    [[nodiscard]] virtual std::wstring SuperClassName() const { return L"Value"; }
    [[nodiscard]] virtual bool Equals(const Object& other) const { return this == &other; }

    // Property names are lower case. Nothing, or false: no such property.
    virtual std::optional<Value> FindProperty(const std::wstring& /*name*/) { return {}; }
    virtual bool SetProperty(const std::wstring& /*name*/, const Value& /*value*/) { return false; }
    /// Names for `getPropNames`.
    virtual void CollectPropertyNames(std::vector<std::wstring>& /*names*/) const {}

    // Nothing, or false: cannot be indexed so.
    virtual std::optional<Value> FindElement(const Value& /*index*/) { return {}; }
    virtual bool SetElement(const Value& /*index*/, const Value& /*value*/) { return false; }

    /// Collections: item `position` (from 0), or nothing behind the last. Asked anew for every step
    /// of a loop, so that live collections can change meanwhile.
    [[nodiscard]] virtual bool IsCollection() const { return false; }
    virtual std::optional<Value> FindItem(size_t /*position*/) { return {}; }

    /// Nothing: cannot be copied.
    virtual std::optional<Value> Copy() { return {}; }
    /// Nothing: cannot be called.
    virtual std::optional<Value> Call(Interpreter&, Arguments&) { return {}; }
    /// The variables that a function among the value needs, when it was defined among variables.
    [[nodiscard]] virtual std::shared_ptr<Frame> Home() const { return nullptr; }
};

} // namespace simhost::script
