// Failures that only the platform can bring about, made at the linker's seam: the WinHTTP calls
// of the client go through the functions below (see CMakeLists.txt), which fail on order.
#include "service/http.h"

#include "tests/service/live/live_service.h"

#include <windows.h>
// After windows.h.
#include <winhttp.h>

#include <vector>

namespace {

enum class Failing { None, Open, Connect, OpenRequest, ReadData, QueryHeaders };
Failing failing = Failing::None;
std::vector<HINTERNET> opened;
std::vector<HINTERNET> closed;

HINTERNET Opened(HINTERNET handle) {
    opened.push_back(handle);
    return handle;
}

bool Fails(Failing call) {
    if (failing != call)
        return false;
    SetLastError(4711);
    return true;
}

} // namespace

extern "C" {
HINTERNET WINAPI __real_WinHttpOpen(LPCWSTR, DWORD, LPCWSTR, LPCWSTR, DWORD);
HINTERNET WINAPI __real_WinHttpConnect(HINTERNET, LPCWSTR, INTERNET_PORT, DWORD);
HINTERNET WINAPI __real_WinHttpOpenRequest(HINTERNET, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR*,
                                           DWORD);
BOOL WINAPI __real_WinHttpReadData(HINTERNET, LPVOID, DWORD, LPDWORD);
BOOL WINAPI __real_WinHttpQueryHeaders(HINTERNET, DWORD, LPCWSTR, LPVOID, LPDWORD, LPDWORD);
BOOL WINAPI __real_WinHttpCloseHandle(HINTERNET);

HINTERNET WINAPI __wrap_WinHttpOpen(LPCWSTR agent, DWORD access, LPCWSTR proxy, LPCWSTR bypass,
                                    DWORD flags) {
    return Fails(Failing::Open) ? nullptr
                                : Opened(__real_WinHttpOpen(agent, access, proxy, bypass, flags));
}
HINTERNET WINAPI __wrap_WinHttpConnect(HINTERNET session, LPCWSTR host, INTERNET_PORT port,
                                       DWORD reserved) {
    return Fails(Failing::Connect) ? nullptr
                                   : Opened(__real_WinHttpConnect(session, host, port, reserved));
}
HINTERNET WINAPI __wrap_WinHttpOpenRequest(HINTERNET connection, LPCWSTR method, LPCWSTR path,
                                           LPCWSTR version, LPCWSTR referrer, LPCWSTR* types,
                                           DWORD flags) {
    return Fails(Failing::OpenRequest)
               ? nullptr
               : Opened(__real_WinHttpOpenRequest(connection, method, path, version, referrer,
                                                  types, flags));
}
BOOL WINAPI __wrap_WinHttpReadData(HINTERNET request, LPVOID buffer, DWORD size, LPDWORD read) {
    return Fails(Failing::ReadData) ? FALSE : __real_WinHttpReadData(request, buffer, size, read);
}
BOOL WINAPI __wrap_WinHttpQueryHeaders(HINTERNET request, DWORD what, LPCWSTR name, LPVOID buffer,
                                       LPDWORD size, LPDWORD index) {
    return Fails(Failing::QueryHeaders)
               ? FALSE
               : __real_WinHttpQueryHeaders(request, what, name, buffer, size, index);
}
BOOL WINAPI __wrap_WinHttpCloseHandle(HINTERNET handle) {
    closed.push_back(handle);
    return __real_WinHttpCloseHandle(handle);
}
}

namespace brimwave::testing {
namespace {

class PlatformFailureTest : public LiveTest {
  protected:
    HttpResult BalanceWith(Failing call) {
        opened.clear();
        closed.clear();
        failing = call;
        HttpResult result = HttpGet(service_.https + L"/api/balance", token_);
        failing = Failing::None;
        return result;
    }
};

TEST_F(PlatformFailureTest, GivesItsTextAndClosesWhatWasOpened) {
    struct Case {
        Failing call;
        std::wstring text;
        std::size_t handles;
    };
    const Case cases[] = {
        {Failing::Open, L"WinHttpOpen failed", 0},
        {Failing::Connect, L"WinHttpConnect failed", 1},
        {Failing::OpenRequest, L"WinHttpOpenRequest failed", 2},
        {Failing::QueryHeaders, L"Could not read HTTP status code, GetLastError=4711", 3},
    };
    for (const auto& c : cases) {
        const HttpResult result = BalanceWith(c.call);
        EXPECT_FALSE(result.ok);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(result.text, c.text);
        EXPECT_EQ(opened.size(), c.handles);
        // The request first, then the connection, then the session.
        EXPECT_EQ(closed, std::vector<HINTERNET>(opened.rbegin(), opened.rend()));
    }
}

TEST_F(PlatformFailureTest, HandlesAreClosedOnEveryOtherWay) {
    const std::pair<std::wstring, std::size_t> cases[] = {
        {service_.https + L"/api/balance", 3},
        {L"https://127.0.0.1:1/x", 3},
        {service_.FaultyTls("expired") + L"/api/balance", 3},
        {L"no url", 0},
    };
    for (const auto& [url, handles] : cases) {
        opened.clear();
        closed.clear();
        (void)HttpGet(url, token_);
        EXPECT_EQ(opened.size(), handles);
        EXPECT_EQ(closed, std::vector<HINTERNET>(opened.rbegin(), opened.rend()));
    }
}

TEST_F(PlatformFailureTest, AReadThatFailsKeepsTheStatus) {
    const HttpResult result = BalanceWith(Failing::ReadData);
    EXPECT_TRUE(result.ok);
    EXPECT_EQ(result.status, 200);
    EXPECT_EQ(result.text, L"");
}

} // namespace
} // namespace brimwave::testing
