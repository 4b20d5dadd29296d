#include "tests/support/fake_http.h"

#include <stdexcept>

namespace brimwave {
namespace {

testing::FakeHttp* current = nullptr;

template <typename Text, typename View>
std::optional<Text> Copy(const std::optional<View>& view) {
    return view ? std::optional<Text>(Text(*view)) : std::nullopt;
}

} // namespace

HttpResult HttpRequest(std::wstring_view url, std::wstring_view method, std::wstring_view token,
                       std::optional<std::string_view> body,
                       std::optional<std::wstring_view> extraHeaders) {
    if (!current)
        throw std::logic_error("a request was made while no FakeHttp lives");
    return current->Play({std::wstring(url), std::wstring(method), std::wstring(token),
                          Copy<std::string>(body), Copy<std::wstring>(extraHeaders)});
}

namespace testing {

FakeHttp::FakeHttp() {
    if (current)
        throw std::logic_error("two FakeHttp at a time");
    current = this;
}

FakeHttp::~FakeHttp() {
    current = nullptr;
}

FakeHttp& FakeHttp::Answer(int status, std::wstring text) {
    answers_.push_back(
        {.ok = status >= 200 && status <= 299, .status = status, .text = std::move(text)});
    return *this;
}

FakeHttp& FakeHttp::Fail(std::wstring text) {
    answers_.push_back({.text = std::move(text)});
    return *this;
}

void FakeHttp::OnRequest(std::function<void(const RecordedRequest&)> watcher) {
    watcher_ = std::move(watcher);
}

HttpResult FakeHttp::Play(RecordedRequest request) {
    requests_.push_back(std::move(request));
    if (watcher_)
        watcher_(requests_.back());
    if (answers_.empty())
        throw std::logic_error("a request was made that the test did not expect");
    HttpResult answer = std::move(answers_.front());
    answers_.pop_front();
    return answer;
}

} // namespace testing
} // namespace brimwave
