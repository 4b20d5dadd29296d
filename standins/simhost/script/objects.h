#pragma once
// The kinds of values that scripts themselves make: texts, names, lists, points and colours.
#include <array>
#include <string>
#include <vector>

#include "simhost/script/heap.h"

namespace simhost::script {

class StringObject final : public Object {
  public:
    explicit StringObject(std::wstring text);
    [[nodiscard]] const std::wstring& Text() const { return text_; }

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"String"; }
    [[nodiscard]] bool Equals(const Object& other) const override;
    std::optional<Value> FindProperty(const std::wstring& name) override;
    std::optional<Value> FindElement(const Value& index) override;
    std::optional<Value> Copy() override;

  private:
    std::wstring text_;
    MemoryShare share_;
};

/// #name; equal to another in any case.
class NameObject final : public Object {
  public:
    explicit NameObject(std::wstring text) : text_(std::move(text)) {}
    [[nodiscard]] const std::wstring& Text() const { return text_; }

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"Name"; }
    [[nodiscard]] bool Equals(const Object& other) const override;

  private:
    std::wstring text_;
};

class ArrayObject final : public Container {
  public:
    explicit ArrayObject(std::vector<Value> items = {});
    ~ArrayObject() override { Release(std::move(items_)); }

    [[nodiscard]] const std::vector<Value>& Items() const { return items_; }
    void Append(Value value);
    /// Makes room at the position, with undefined values where the array ends before it.
    void Insert(size_t position, Value value);
    void Erase(size_t position);

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"Array"; }
    std::optional<Value> FindProperty(const std::wstring& name) override;
    std::optional<Value> FindElement(const Value& index) override;
    bool SetElement(const Value& index, const Value& value) override;
    [[nodiscard]] bool IsCollection() const override { return true; }
    std::optional<Value> FindItem(size_t position) override;
    std::optional<Value> Copy() override;

  private:
    std::vector<Value> TakeValues() override { return std::exchange(items_, {}); }
    void Resize(size_t size);

    std::vector<Value> items_;
    MemoryShare share_;
};

enum class VectorKind { Point2, Point3, Point4, Color };

/// Points, and colours (components 0..255, alpha last): two to four floats.
class VectorObject final : public Object {
  public:
    VectorObject(VectorKind kind, std::array<float, 4> components)
        : kind_(kind), components_(components) {}

    [[nodiscard]] VectorKind Kind() const { return kind_; }
    [[nodiscard]] size_t Size() const;
    [[nodiscard]] float At(size_t i) const { return components_[i]; }

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    [[nodiscard]] bool Equals(const Object& other) const override;
    std::optional<Value> FindProperty(const std::wstring& name) override;
    bool SetProperty(const std::wstring& name, const Value& value) override;
    std::optional<Value> Copy() override;

  private:
    float* FindComponent(const std::wstring& name);

    VectorKind kind_;
    std::array<float, 4> components_;
};

[[nodiscard]] Value MakeString(std::wstring text);
[[nodiscard]] Value MakeName(std::wstring text);
[[nodiscard]] Value MakeArray(std::vector<Value> items);
[[nodiscard]] Value MakeVector(VectorKind kind, float x, float y, float z = 0, float w = 0);

} // namespace simhost::script
