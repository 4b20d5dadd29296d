#pragma once
#include "devservice/certificates.h"
#include "devservice/faults.h"
#include "devservice/request_head.h"
#include "devservice/transport.h"

#include <httplib.h>

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>

namespace devservice {

/// One request and what shall go wrong with it.
struct Exchange {
    RequestHead head;
    std::optional<Fault> fault;
};

/// One port on 127.0.0.1, over TCP or TLS. The library parses requests, routes them and writes
/// answers; this class stands between it and the socket, to record a request's head as it came
/// over the wire and to spoil an answer as a fault orders.
class HttpFront : public httplib::Server {
  public:
    using FaultChoice = std::function<std::optional<Fault>(const RequestHead&)>;

    /// Without `tls` the port speaks plain HTTP. `chooseFault` is asked once for every request.
    HttpFront(FaultChoice chooseFault, OpenSslPtr<SSL_CTX> tls, std::size_t threads);
    ~HttpFront() override;
    HttpFront(const HttpFront&) = delete;
    HttpFront& operator=(const HttpFront&) = delete;

    /// Takes the port (0: any free one), starts answering and gives the port's number. Throws
    /// StartError when the port is taken.
    int Start(std::uint16_t port);
    /// Breaks off what is under way and returns when all is closed.
    void Stop();

    /// The exchange that the calling thread is answering; valid inside request handlers.
    [[nodiscard]] static const Exchange& Current();

  private:
    bool process_and_close_socket(socket_t socket) override;
    void ServeConnection(socket_t socket);
    bool ServeRequest(socket_t socket, Transport& transport, bool last);
    std::unique_ptr<Transport> OpenTransport(socket_t socket);
    bool ReadHead(Transport& transport, std::string& raw);
    bool PlayAnswer(socket_t socket, Transport& transport, std::string_view answer,
                    const Fault& fault);
    bool Pause(std::chrono::milliseconds time);
    bool WaitForRequest(socket_t socket, const Transport& transport) const;

    class ExchangeStream;

    FaultChoice chooseFault_;
    OpenSslPtr<SSL_CTX> tls_;
    std::thread listener_;
    std::mutex mutex_;
    std::condition_variable stopped_;
    bool stopping_ = false;
    std::set<socket_t> open_;
};

} // namespace devservice
