#pragma once
#include "devservice/request_head.h"

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <string_view>

namespace devservice {

/// A job that is being received. Its folder shows up under its number only when it is kept, whole;
/// otherwise nothing stays behind.
class IncomingJob {
  public:
    explicit IncomingJob(std::filesystem::path folder);
    ~IncomingJob();
    IncomingJob(const IncomingJob&) = delete;
    IncomingJob& operator=(const IncomingJob&) = delete;

    /// Appends bytes of the body; false when they could not be written.
    [[nodiscard]] bool Append(std::string_view bytes);
    [[nodiscard]] std::size_t Size() const { return size_; }

  private:
    friend class JobStore;
    std::filesystem::path folder_;
    std::ofstream body_;
    std::size_t size_ = 0;
};

/// The folder of accepted jobs: 0001/package.json holds a body byte for byte, 0001/request.json
/// how it was sent. Numbers go on from what is there. Safe to use from several threads.
class JobStore {
  public:
    /// Throws StartError when the folder cannot be made or written to.
    explicit JobStore(std::filesystem::path folder);

    [[nodiscard]] IncomingJob Begin();
    /// Keeps the job and gives its number; empty when it could not be written.
    [[nodiscard]] std::string Keep(IncomingJob& job, const RequestHead& head);
    [[nodiscard]] std::size_t Count();

  private:
    std::filesystem::path folder_;
    std::mutex mutex_;
    std::size_t last_ = 0;     ///< highest number given
    std::size_t count_ = 0;    ///< jobs in the folder
    std::size_t incoming_ = 0; ///< names the folders of jobs being received
};

} // namespace devservice
