#include "service/account.h"

#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = fuzz::Units(data, size);
    constexpr std::int32_t untouched = 123456789;
    std::int32_t value = untouched;
    if (!brimwave::ExtractJsonInt(text, L"n", value)) {
        fuzz::Require(value == untouched);
        // In front of a good member anything may stand that does not name it.
        if (text.find(L"\"n\"") == std::wstring::npos && !text.ends_with(L"\"n") &&
            !text.ends_with(L'"'))
            fuzz::Require(brimwave::ExtractJsonInt(text + L"\"n\":-42", L"n", value) &&
                          value == -42);
    } else {
        const std::size_t found = text.find(L"\"n\"");
        fuzz::Require(found != std::wstring::npos);
        fuzz::Require(text.find_first_of(L"0123456789", found) != std::wstring::npos);
    }
    return 0;
}
