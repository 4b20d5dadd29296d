#include "service/url.h"

#include "fuzz/fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring url = fuzz::Units(data, size);
    brimwave::ParsedUrl out;
    if (!brimwave::ParseUrl(url, out)) {
        fuzz::Require(url.find(L"://") == std::wstring::npos);
        return 0;
    }
    fuzz::Require(out.host.find_first_of(L":/") == std::wstring::npos);
    fuzz::Require(out.path.starts_with(L'/'));
    fuzz::Require(out.secure == url.starts_with(L"https://"));
    // What was parsed, put together again, is parsed the same.
    const std::wstring again = (out.secure ? L"https://" : L"http://") + out.host + L":" +
                               std::to_wstring(out.port) + out.path;
    brimwave::ParsedUrl second;
    fuzz::Require(brimwave::ParseUrl(again, second) && second.host == out.host &&
                  second.path == out.path && second.port == out.port &&
                  second.secure == out.secure);
    return 0;
}
