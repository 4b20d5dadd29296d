#include "devservice/service.h"

#include <nlohmann/json.hpp>

#include <cstdio>
#include <ctime>

namespace devservice {
namespace {

using nlohmann::json;

constexpr const char* jsonType = "application/json; charset=utf-8";
constexpr std::size_t recordedRequests = 1000;

void Answer(httplib::Response& response, int status, const json& body) {
    response.status = status;
    response.set_content(body.dump(-1, ' ', false, json::error_handler_t::replace), jsonType);
}

void AnswerError(httplib::Response& response, int status, const char* phrase) {
    Answer(response, status, {{"error", phrase}});
}

// Both phrases are the protocol's: clients look for them in the text.
void AnswerBadToken(httplib::Response& response, const std::string& token) {
    AnswerError(response, 401,
                token.empty() ? "authorization header missing or invalid" : "invalid token");
}

// Puts the fault's answer in the place of the ordinary one, which has not been made.
void AnswerFault(httplib::Response& response, const Fault& fault) {
    response.status = fault.status.value_or(fault.redirect.empty() ? 200 : 302);
    if (!fault.redirect.empty())
        response.set_header("Location", fault.redirect);
    if (fault.body)
        response.set_content(*fault.body, jsonType);
}

// Carries out an exchange: the ordinary answer or the fault's, padded when that is ordered.
template <typename Ordinary>
void AnswerExchange(httplib::Response& response, Ordinary ordinary) {
    const auto& fault = HttpFront::Current().fault;
    if (fault && fault->ReplacesAnswer())
        AnswerFault(response, *fault);
    else
        ordinary();
    if (fault && response.body.size() < fault->bodySize)
        response.body.resize(fault->bodySize, ' ');
}

std::string PathOf(const std::string& target) {
    return target.substr(0, target.find('?'));
}

// Text from the network for the log: one line, printable.
std::string Printable(std::string text) {
    for (char& c : text) {
        if (c < ' ' || c > '~')
            c = '?';
    }
    return text.substr(0, 200);
}

std::string Now() {
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    char text[32];
    std::strftime(text, sizeof text, "%H:%M:%S", &utc);
    return text;
}

} // namespace

Service::Service(const std::filesystem::path& accounts, const std::filesystem::path& jobs)
    : jobs_(jobs) {
    accounts_.Load(accounts, faults_);
}

void Service::Attach(HttpFront& front) {
    front.Get(balancePath, [this](const httplib::Request&, httplib::Response& response) {
        AnswerExchange(response, [&] { Balance(response); });
    });
    front.Post(jobsPath,
               [this](const httplib::Request& request, httplib::Response& response,
                      const httplib::ContentReader& body) { Job(request, response, body); });
    front.Get("/health",
              [this](const httplib::Request&, httplib::Response& response) { Health(response); });
    AttachControl(front);
    front.set_logger([this](const httplib::Request& request, const httplib::Response& response) {
        Log(request, response);
    });
}

std::optional<Fault> Service::ChooseFault(const RequestHead& head) {
    const std::string path = PathOf(head.target);
    const bool jobs = path == jobsPath;
    if (!jobs && path != balancePath)
        return std::nullopt;
    {
        const std::lock_guard lock(recordedMutex_);
        recorded_.push_back(head);
        if (recorded_.size() > recordedRequests)
            recorded_.pop_front();
    }
    return faults_.Take(head.BearerToken(), jobs ? Fault::On::Jobs : Fault::On::Balance);
}

void Service::Balance(httplib::Response& response) {
    const std::string token = HttpFront::Current().head.BearerToken();
    const auto account = accounts_.Find(token);
    if (!account) {
        AnswerBadToken(response, token);
        return;
    }
    json answer{{"balance", account->balance}};
    if (account->dailyLimit)
        answer["daily_limit"] = *account->dailyLimit;
    if (const auto left = account->ConversionsLeft())
        answer["conversions_left"] = *left;
    Answer(response, 200, answer);
}

// The body is always taken in whole before the answer, whatever that will be: a client that is
// still sending when the connection closes would never see it.
void Service::Job(const httplib::Request& request, httplib::Response& response,
                  const httplib::ContentReader& readBody) {
    if (request.is_multipart_form_data() || request.has_header("Content-Encoding")) {
        AnswerError(response, 415, "the body must be the package itself");
        return;
    }
    if (!request.has_header("Content-Length") && !request.has_header("Transfer-Encoding")) {
        AnswerError(response, 411, "length required");
        return;
    }
    IncomingJob job = jobs_.Begin();
    bool stored = true;
    const bool whole = readBody([&](const char* bytes, std::size_t size) {
        stored = job.Append({bytes, size}) && stored;
        return true;
    });
    if (!whole)
        return; // the client is gone
    AnswerExchange(response, [&] {
        if (stored)
            StoreJob(job, HttpFront::Current().head, response);
        else
            AnswerError(response, 507, "the job could not be stored");
    });
}

void Service::StoreJob(IncomingJob& job, const RequestHead& head, httplib::Response& response) {
    const std::string token = head.BearerToken();
    switch (accounts_.Charge(token)) {
    case ChargeResult::UnknownToken:
        return AnswerBadToken(response, token);
    case ChargeResult::NoCredit:
        return AnswerError(response, 402, "insufficient balance");
    case ChargeResult::DailyLimitReached:
        return AnswerError(response, 429, "daily conversion limit reached");
    case ChargeResult::Charged:
        break;
    }
    if (const std::string number = jobs_.Keep(job, head); !number.empty())
        return Answer(response, 200, {{"job", number}, {"status", "queued"}});
    accounts_.Refund(token);
    AnswerError(response, 507, "the job could not be stored");
}

void Service::Health(httplib::Response& response) {
    Answer(response, 200,
           {{"status", "ok"}, {"accounts", accounts_.Size()}, {"jobs", jobs_.Count()}});
}

// One line for each request. Tokens stay out: the account's name stands for them, and a query,
// where a confused client may put one, is left out too.
void Service::Log(const httplib::Request& request, const httplib::Response& response) {
    const Exchange& exchange = HttpFront::Current();
    const auto account = accounts_.Find(exchange.head.BearerToken());
    std::fprintf(
        stderr, "%s %s %s %s %d %s%s\n", Now().c_str(), exchange.head.secure ? "https" : "http",
        Printable(request.method).c_str(), Printable(request.path).c_str(), response.status,
        account ? Printable(account->name).c_str() : "-", exchange.fault ? " (fault)" : "");
}

} // namespace devservice
