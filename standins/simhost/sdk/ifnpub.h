#pragma once
#include "paramtype.h"
#include "strclass.h"

#include <memory>

/// A value that crosses between the host's script engine and a plug-in. Owns its text.
class FPValue {
  public:
    ParamType2 type = TYPE_VOID;
    union {
        int i;
        BOOL b;
        float f;
        INT_PTR intptr;
        const MCHAR* s;
    };

    FPValue() : intptr(0) {}
    void Init() {
        type = TYPE_VOID;
        intptr = 0;
        text_.reset();
    }
    void Free() { Init(); }
    /// Makes this a TYPE_STRING that holds a copy of the text.
    void LoadString(const std::wstring& text) {
        text_ = std::make_shared<std::wstring>(text);
        type = TYPE_STRING;
        s = text_->c_str();
    }

  private:
    std::shared_ptr<std::wstring> text_;
};
