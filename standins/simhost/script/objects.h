#pragma once
// The kinds of values that scripts themselves make: texts, names, lists, points, streams.
#include <array>
#include <string>
#include <vector>

#include "simhost/script/heap.h"
#include "simhost/script/object.h"

namespace simhost::script {

class StringObject final : public Object {
  public:
    explicit StringObject(std::wstring text) { Set(std::move(text)); }
    [[nodiscard]] const std::wstring& Text() const { return text_; }
    void Set(std::wstring text) {
        share_.Set(text.size() * sizeof(wchar_t));
        text_ = std::move(text);
    }

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"String"; }
    [[nodiscard]] bool Equals(const Object& other) const override;
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool GetIndex(Interpreter&, const Value& index, Value& result) override;
    bool SetIndex(Interpreter&, const Value& index, const Value& value) override;

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

class ArrayObject final : public Object, public Traceable {
  public:
    ArrayObject() = default;
    explicit ArrayObject(std::vector<Value> items) { Assign(std::move(items)); }
    ~ArrayObject() override { ReleaseValues(std::move(items_)); }

    [[nodiscard]] const std::vector<Value>& Items() const { return items_; }
    void Assign(std::vector<Value> items);
    void Append(Value value);
    /// Any position up to the limit of lists; the gap is undefined.
    void SetAt(size_t position, Value value);
    void Insert(size_t position, Value value);
    void Erase(size_t position);

    [[nodiscard]] const Traceable* AsTraceable() const override { return this; }
    void Trace(Marker& marker) const override;
    void DropReferences(std::vector<Value>& garbage) override;
    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"Array"; }
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool SetProperty(Interpreter&, const std::wstring& name, const Value& value) override;
    bool GetIndex(Interpreter&, const Value& index, Value& result) override;
    bool SetIndex(Interpreter&, const Value& index, const Value& value) override;
    [[nodiscard]] bool IsCollection() const override { return true; }
    bool Item(Interpreter&, size_t position, Value& result) override;

  private:
    void CheckSize(size_t size);

    std::vector<Value> items_;
    MemoryShare share_;
};

/// #{1..3, 5}: a set of positive numbers.
class BitArrayObject final : public Object {
  public:
    [[nodiscard]] const std::vector<bool>& Bits() const { return bits_; } // 0 for number 1
    void Set(size_t position, bool on);
    [[nodiscard]] size_t CountOn() const;

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"BitArray"; }
    [[nodiscard]] bool Equals(const Object& other) const override;
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool GetIndex(Interpreter&, const Value& index, Value& result) override;
    bool SetIndex(Interpreter&, const Value& index, const Value& value) override;
    [[nodiscard]] bool IsCollection() const override { return true; }
    bool Item(Interpreter&, size_t position, Value& result) override;

  private:
    std::vector<bool> bits_;
    MemoryShare share_;
};

enum class VectorKind { Point2, Point3, Point4, Color, Quat, Euler };

/// Points, colours (components 0..255, alpha last) and rotations: two to four floats.
class VectorObject final : public Object {
  public:
    VectorObject(VectorKind kind, std::array<float, 4> components)
        : kind_(kind), components_(components) {}

    [[nodiscard]] VectorKind Kind() const { return kind_; }
    [[nodiscard]] size_t Size() const;
    [[nodiscard]] float At(size_t i) const { return components_[i]; }
    [[nodiscard]] const std::array<float, 4>& Components() const { return components_; }

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override;
    [[nodiscard]] bool Equals(const Object& other) const override;
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool SetProperty(Interpreter&, const std::wstring& name, const Value& value) override;
    bool GetIndex(Interpreter&, const Value& index, Value& result) override;
    bool SetIndex(Interpreter&, const Value& index, const Value& value) override;

  private:
    [[nodiscard]] int ComponentOf(const std::wstring& name) const;

    VectorKind kind_;
    std::array<float, 4> components_;
};

/// A transform: three axes and a position, row by row.
class MatrixObject final : public Object {
  public:
    using Rows = std::array<std::array<float, 3>, 4>;
    explicit MatrixObject(const Rows& rows) : rows_(rows) {}
    [[nodiscard]] const Rows& GetRows() const { return rows_; }

    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"Matrix3"; }
    [[nodiscard]] bool Equals(const Object& other) const override;
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool SetProperty(Interpreter&, const std::wstring& name, const Value& value) override;
    bool GetIndex(Interpreter&, const Value& index, Value& result) override;

  private:
    Rows rows_;
};

class IntervalObject final : public Object {
  public:
    IntervalObject(double start, double end) : start_(start), end_(end) {}
    void Print(Printer& printer, bool nested) const override;
    [[nodiscard]] std::wstring ClassName() const override { return L"Interval"; }
    bool GetProperty(Interpreter&, const std::wstring& name, Value& result) override;
    bool SetProperty(Interpreter&, const std::wstring& name, const Value& value) override;

  private:
    double start_; // ticks
    double end_;
};

[[nodiscard]] Value MakeString(std::wstring text);
[[nodiscard]] Value MakeName(std::wstring text);
[[nodiscard]] Value MakeArray(std::vector<Value> items);
[[nodiscard]] Value MakeVector(VectorKind kind, float x, float y, float z = 0, float w = 0);

} // namespace simhost::script
