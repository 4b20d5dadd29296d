#pragma once
#include "service/http.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace brimwave::testing {

// One call of HttpRequest as it was made.
struct RecordedRequest {
    std::wstring url;
    std::wstring method;
    std::wstring token;
    std::optional<std::string> body;
    std::optional<std::wstring> extraHeaders;
};

// Takes the place of the network while it lives: calls of HttpRequest are recorded and answered,
// in order, from what was queued. A call that nobody expected is a test failure. One at a time.
class FakeHttp {
  public:
    FakeHttp();
    ~FakeHttp();
    FakeHttp(const FakeHttp&) = delete;
    FakeHttp& operator=(const FakeHttp&) = delete;

    // Queues an answer with the given status and body; `ok` follows from the status.
    FakeHttp& Answer(int status, std::wstring text);
    // Queues a failure of the transport: no status, and its text.
    FakeHttp& Fail(std::wstring text);
    // Is called with each request before its answer is given: to look at files of the moment.
    void OnRequest(std::function<void(const RecordedRequest&)> watcher);

    [[nodiscard]] const std::vector<RecordedRequest>& Requests() const { return requests_; }
    // Called by HttpRequest.
    HttpResult Play(RecordedRequest request);

  private:
    std::deque<HttpResult> answers_;
    std::vector<RecordedRequest> requests_;
    std::function<void(const RecordedRequest&)> watcher_;
};

} // namespace brimwave::testing
