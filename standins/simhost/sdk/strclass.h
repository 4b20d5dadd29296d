#pragma once
#include "maxtypes.h"

#include <string>
#include <utility>

/// The host's wide string. Never null: a null pointer makes an empty text.
class WStr {
  public:
    WStr() = default;
    WStr(const wchar_t* text) : text_(text ? text : L"") {}
    explicit WStr(std::wstring text) : text_(std::move(text)) {}

    [[nodiscard]] const wchar_t* data() const { return text_.c_str(); }
    [[nodiscard]] int Length() const { return static_cast<int>(text_.size()); }
    [[nodiscard]] int length() const { return Length(); }
    [[nodiscard]] bool isNull() const { return text_.empty(); }
    operator const wchar_t*() const { return text_.c_str(); }

    WStr& operator+=(const WStr& other) {
        text_ += other.text_;
        return *this;
    }
    friend WStr operator+(const WStr& a, const WStr& b) { return WStr(a.text_ + b.text_); }
    friend bool operator==(const WStr& a, const WStr& b) { return a.text_ == b.text_; }
    friend bool operator==(const WStr& a, const wchar_t* b) { return b && a.text_ == b; }

  private:
    std::wstring text_;
};

using MSTR = WStr;
