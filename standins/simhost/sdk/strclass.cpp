#include "strclass.h"

#include "text/utf8.h"

MaxUtf8String WStr::ToUTF8() const {
    return MaxUtf8String(utf8::FromWide(text_));
}

WStr WStr::FromACP(const char* text) {
    if (!text)
        return WStr();
    const int units = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
    if (units <= 1)
        return WStr();
    std::wstring wide(static_cast<size_t>(units), L'\0');
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), units);
    wide.pop_back(); // the terminator
    return WStr(std::move(wide));
}
