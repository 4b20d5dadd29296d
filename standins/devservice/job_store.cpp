#include "devservice/job_store.h"

#include "devservice/start_error.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <cstdio>

namespace devservice {
namespace {

namespace fs = std::filesystem;

constexpr const char* incoming = ".incoming-"; // jobs that are being received

std::string JobNumber(std::size_t number) {
    char text[24];
    std::snprintf(text, sizeof text, "%04zu", number);
    return text;
}

// The number of a job folder's name; 0 for other names.
std::size_t NumberOf(const std::string& name) {
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    return error == std::errc() && end == name.data() + name.size() ? number : 0;
}

} // namespace

IncomingJob::IncomingJob(fs::path folder)
    : folder_(std::move(folder)), body_(folder_ / "package.json", std::ios::binary) {}

IncomingJob::~IncomingJob() {
    body_.close();
    std::error_code error;
    if (!folder_.empty())
        fs::remove_all(folder_, error);
}

bool IncomingJob::Append(std::string_view bytes) {
    size_ += bytes.size();
    body_.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return body_.good();
}

JobStore::JobStore(fs::path folder) : folder_(std::move(folder)) {
    try {
        fs::create_directories(folder_);
        for (const auto& entry : fs::directory_iterator(folder_)) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with(incoming)) // left by a service that was killed
                fs::remove_all(entry.path());
            const std::size_t number = NumberOf(name);
            last_ = std::max(last_, number);
            count_ += number != 0;
        }
    } catch (const fs::filesystem_error& error) {
        throw StartError("cannot use the jobs folder " + folder_.string() + ": " +
                         error.code().message());
    }
}

IncomingJob JobStore::Begin() {
    const std::lock_guard lock(mutex_);
    const auto folder = folder_ / (incoming + std::to_string(++incoming_));
    std::error_code error;
    fs::create_directory(folder, error);
    return IncomingJob(folder);
}

std::string JobStore::Keep(IncomingJob& job, const RequestHead& head) {
    job.body_.close();
    const fs::path request = job.folder_ / "request.json";
    std::ofstream out(request, std::ios::binary);
    out << DescribeRequest(head, job.Size())
               .dump(2, ' ', false, nlohmann::json::error_handler_t::replace)
        << '\n';
    out.close();
    std::error_code error; // the token stands in there: for the owner's eyes
    fs::permissions(request, fs::perms::owner_read | fs::perms::owner_write, error);
    if (!job.body_ || !out || error)
        return {};

    const std::lock_guard lock(mutex_);
    std::string number = JobNumber(last_ + 1);
    fs::rename(job.folder_, folder_ / number, error);
    if (error)
        return {};
    job.folder_.clear();
    ++last_;
    ++count_;
    return number;
}

std::size_t JobStore::Count() {
    const std::lock_guard lock(mutex_);
    return count_;
}

} // namespace devservice
