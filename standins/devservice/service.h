#pragma once
#include "devservice/accounts.h"
#include "devservice/faults.h"
#include "devservice/http_front.h"
#include "devservice/job_store.h"

#include <deque>
#include <filesystem>
#include <mutex>
#include <optional>

namespace devservice {

/// The paths of the protocol.
inline constexpr const char* balancePath = "/api/balance";
inline constexpr const char* jobsPath = "/node/api/v1/jobs";

/// The conversion service behind every port: accounts, jobs, ordered faults and the addresses
/// under /control that set them. Must outlive the fronts that it answers for.
class Service {
  public:
    /// Throws StartError.
    Service(const std::filesystem::path& accounts, const std::filesystem::path& jobs);

    /// Adds the service's addresses to a front that is not started yet.
    void Attach(HttpFront& front);
    /// The fault for a request, used up by this call. Also records the request.
    [[nodiscard]] std::optional<Fault> ChooseFault(const RequestHead& head);

  private:
    void Balance(httplib::Response& response);
    void Job(const httplib::Request& request, httplib::Response& response,
             const httplib::ContentReader& readBody);
    void StoreJob(IncomingJob& job, const RequestHead& head, httplib::Response& response);
    void Health(httplib::Response& response);
    void AttachControl(HttpFront& front);
    void Log(const httplib::Request& request, const httplib::Response& response);

    FaultBoard faults_;
    AccountBook accounts_;
    JobStore jobs_;
    std::mutex recordedMutex_;
    std::deque<RequestHead> recorded_; ///< the latest requests to the protocol's addresses
};

} // namespace devservice
