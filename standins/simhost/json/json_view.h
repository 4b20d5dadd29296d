#pragma once
// Reading JSON with places: a view knows where it stands, so that every complaint can say it.
// Only the sources of the scene file and the catalogue include this (it is slow to compile).
#include <nlohmann/json.hpp>

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace simhost {

using Json = nlohmann::json;

/// What was found where, and what was expected.
class JsonFault : public std::runtime_error {
  public:
    JsonFault(std::string place, const std::string& complaint)
        : std::runtime_error(complaint), place_(std::move(place)) {}
    [[nodiscard]] const std::string& Place() const { return place_; }

  private:
    std::string place_;
};

/// A JSON value and the way to it. A view has to outlive the views made from it.
class JsonView {
  public:
    explicit JsonView(const Json& root) : json_(&root) {}
    JsonView(const JsonView&) = default;

    [[nodiscard]] const Json& Raw() const { return *json_; }
    [[nodiscard]] bool IsNull() const { return json_->is_null(); }
    [[nodiscard]] bool IsObject() const { return json_->is_object(); }
    [[nodiscard]] bool IsArray() const { return json_->is_array(); }
    [[nodiscard]] bool IsText() const { return json_->is_string(); }
    [[nodiscard]] size_t Size() const { return json_->size(); }

    [[nodiscard]] bool Has(const char* key) const;
    /// The member has to be there.
    [[nodiscard]] JsonView Member(const std::string& key) const;
    /// Empty without the member.
    [[nodiscard]] std::optional<JsonView> Find(const char* key) const;
    /// Reads the member into the value; without the member the value stays.
    template <class T>
    void Read(const char* key, T& value) const {
        if (const auto member = Find(key))
            member->Read(value);
    }
    [[nodiscard]] JsonView Element(size_t i) const { return {(*json_)[i], this, {}, i}; }
    /// Calls `visit(key, view)` for all members but remarks.
    template <class Visit>
    void ForMembers(Visit visit) const {
        Object();
        for (const auto& item : json_->items())
            if (!item.key().starts_with("//"))
                visit(item.key(), JsonView(item.value(), this, item.key(), 0));
    }
    /// Calls `visit(view)` or `visit(view, index)` for all elements.
    template <class Visit>
    void ForElements(Visit visit) const {
        Array();
        for (size_t i = 0; i < Size(); ++i)
            if constexpr (std::is_invocable_v<Visit, const JsonView&>)
                visit(Element(i));
            else
                visit(Element(i), i);
    }
    /// The same for a member that is a list; nothing without the member.
    template <class Visit>
    void ForElementsOf(const char* key, Visit visit) const {
        if (const auto list = Find(key))
            list->ForElements(visit);
    }

    // Values; another kind is a fault.
    const JsonView& Object() const;
    const JsonView& Array() const;
    /// An array of exactly that many.
    const JsonView& Array(size_t count) const;
    [[nodiscard]] std::string_view Utf8() const;
    [[nodiscard]] std::wstring Text() const;
    [[nodiscard]] int Integer() const;
    [[nodiscard]] std::uint32_t Unsigned() const;
    [[nodiscard]] bool Bool() const;
    /// A number, or "nan", "inf", "-inf".
    [[nodiscard]] float Number() const;
    /// A number, or a text such as "0x240".
    [[nodiscard]] std::uint32_t Code() const;
    void Read(bool& value) const { value = Bool(); }
    void Read(int& value) const { value = Integer(); }
    void Read(float& value) const { value = Number(); }
    void Read(std::wstring& value) const { value = Text(); }
    template <class T>
    void Read(std::optional<T>& value) const {
        Read(value.emplace());
    }

    /// A member of another name (but remarks) is a fault.
    void OnlyMembers(std::initializer_list<std::string_view> names,
                     std::initializer_list<std::string_view> more = {}) const;
    [[noreturn]] void Expected(const std::string& what) const;
    [[noreturn]] void Complain(const std::string& complaint) const;
    /// The JSON pointer.
    [[nodiscard]] std::string Place() const;

  private:
    JsonView(const Json& json, const JsonView* up, std::string_view key, size_t index)
        : json_(&json), up_(up), key_(key), index_(index), keyed_(key.data() != nullptr) {}

    const Json* json_;
    const JsonView* up_ = nullptr;
    std::string_view key_;
    size_t index_ = 0;
    bool keyed_ = false;
};

/// Parses; a fault tells line and column.
[[nodiscard]] Json ParseJson(std::string_view text);

} // namespace simhost
