#include "devservice/http_front.h"

#include "devservice/start_error.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>

namespace devservice {
namespace {

constexpr std::size_t maxHead = 64 * 1024;
constexpr int maxRequestsPerConnection = 100;
constexpr int idleMilliseconds = 5000;
constexpr int socketTimeoutSeconds = 60;

void SetOption(socket_t socket, int option, int value) {
    ::setsockopt(socket, SOL_SOCKET, option, &value, sizeof value);
}

thread_local const Exchange* currentExchange = nullptr;

std::string WrongProtocolAnswer(bool tlsCame) {
    const std::string text = tlsCame
                                 ? "{\"error\":\"a TLS handshake was sent to the plain HTTP port\"}"
                                 : "{\"error\":\"plain HTTP request was sent to the TLS port\"}";
    return "HTTP/1.1 400 Bad Request\r\nContent-Type: application/json\r\n"
           "Connection: close\r\nContent-Length: " +
           std::to_string(text.size()) + "\r\n\r\n" + text;
}

std::size_t CutAt(std::string_view answer, Fault::Close close) {
    const auto header = std::min(answer.find("\r\n\r\n"), answer.size());
    const auto body = std::min(header + 4, answer.size());
    switch (close) {
    case Fault::Close::BeforeHeader:
        return 0;
    case Fault::Close::InHeader:
        return header / 2;
    case Fault::Close::InBody:
        return body + (answer.size() - body) / 2;
    case Fault::Close::No:
        break;
    }
    return answer.size();
}

} // namespace

// What the library sees as the connection: the head that was read already, then the rest of the
// body at the speed that a fault orders. Answers that a fault will spoil are held back.
class HttpFront::ExchangeStream : public httplib::Stream {
  public:
    ExchangeStream(HttpFront& front, socket_t socket, Transport& transport, std::string raw,
                   const std::optional<Fault>& fault)
        : front_(front), socket_(socket), transport_(transport), raw_(std::move(raw)),
          rate_(fault ? fault->readBytesPerSecond : 0), holdBack_(fault.has_value()) {}

    bool is_readable() const override { return true; }
    bool is_writable() const override { return true; }
    socket_t socket() const override { return socket_; }

    void get_remote_ip_and_port(std::string& ip, int& port) const override {
        ip = "127.0.0.1";
        port = 0;
    }
    void get_local_ip_and_port(std::string& ip, int& port) const override {
        get_remote_ip_and_port(ip, port);
    }

    ssize_t read(char* buffer, std::size_t size) override {
        if (taken_ < raw_.size()) {
            const std::size_t count = raw_.copy(buffer, size, taken_);
            taken_ += count;
            return static_cast<ssize_t>(count);
        }
        if (rate_ != 0) {
            constexpr std::size_t slices = 20; // a second
            size = std::min(size, std::max<std::size_t>(rate_ / slices, 1));
            if (!front_.Pause(std::chrono::milliseconds(1000 * size / rate_)))
                return -1;
        }
        return transport_.Read(buffer, size);
    }

    ssize_t write(const char* bytes, std::size_t size) override {
        if (holdBack_)
            answer_.append(bytes, size);
        else if (!transport_.Write({bytes, size}))
            return -1;
        return static_cast<ssize_t>(size);
    }

    const std::string& Answer() const { return answer_; }

  private:
    HttpFront& front_;
    socket_t socket_;
    Transport& transport_;
    std::string raw_;
    std::size_t taken_ = 0;
    std::size_t rate_;
    bool holdBack_;
    std::string answer_;
};

HttpFront::HttpFront(FaultChoice chooseFault, OpenSslPtr<SSL_CTX> tls, std::size_t threads)
    : chooseFault_(std::move(chooseFault)), tls_(std::move(tls)) {
    new_task_queue = [threads] { return new httplib::ThreadPool(threads); };
    // Only this: the library's own choice would let two services share a port unnoticed.
    set_socket_options([](socket_t socket) { SetOption(socket, SO_REUSEADDR, 1); });
    set_tcp_nodelay(true);
    set_read_timeout(socketTimeoutSeconds);
    set_write_timeout(socketTimeoutSeconds);
}

HttpFront::~HttpFront() {
    Stop();
}

int HttpFront::Start(std::uint16_t port) {
    const char* const host = "127.0.0.1";
    const int taken = port == 0 ? bind_to_any_port(host) : bind_to_port(host, port) ? port : -1;
    if (taken <= 0) {
        throw StartError("port " + std::to_string(port) + " on " + host +
                         " is taken or not permitted");
    }
    listener_ = std::thread([this] { listen_after_bind(); });
    while (!is_running())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return taken;
}

void HttpFront::Stop() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
        for (const socket_t socket : open_)
            ::shutdown(socket, SHUT_RDWR);
    }
    stopped_.notify_all();
    if (listener_.joinable()) {
        stop();
        listener_.join();
    }
}

const Exchange& HttpFront::Current() {
    return *currentExchange;
}

bool HttpFront::Pause(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return !stopped_.wait_for(lock, time, [this] { return stopping_; });
}

bool HttpFront::process_and_close_socket(socket_t socket) {
    bool serve = false;
    {
        const std::lock_guard lock(mutex_);
        serve = !stopping_;
        open_.insert(socket);
    }
    if (serve)
        ServeConnection(socket);
    {
        const std::lock_guard lock(mutex_);
        open_.erase(socket);
    }
    ::shutdown(socket, SHUT_WR);
    ::close(socket);
    return true;
}

std::unique_ptr<Transport> HttpFront::OpenTransport(socket_t socket) {
    const bool tlsComes = StartsWithTls(socket);
    if (tlsComes && tls_)
        return MakeTlsTransport(socket, tls_.get());
    auto plain = MakePlainTransport(socket);
    if (!tlsComes && !tls_)
        return plain;
    // The other side expects the other protocol: say so at once, in plain HTTP.
    std::string ignored;
    if (tlsComes || ReadHead(*plain, ignored))
        plain->Write(WrongProtocolAnswer(tlsComes));
    return nullptr;
}

void HttpFront::ServeConnection(socket_t socket) {
    const auto transport = OpenTransport(socket);
    if (!transport)
        return;
    for (int left = maxRequestsPerConnection; left > 0; --left) {
        if (!WaitForRequest(socket, *transport) || !ServeRequest(socket, *transport, left == 1))
            return;
    }
}

bool HttpFront::WaitForRequest(socket_t socket, const Transport& transport) const {
    pollfd wanted{.fd = socket, .events = POLLIN, .revents = 0};
    return transport.HasBuffered() || ::poll(&wanted, 1, idleMilliseconds) == 1;
}

// Reads up to and including the empty line, and nothing behind it.
bool HttpFront::ReadHead(Transport& transport, std::string& raw) {
    while (raw.size() < maxHead) {
        char c = 0;
        if (transport.Read(&c, 1) != 1)
            return false;
        raw += c;
        if (c == '\n' && (raw.ends_with("\r\n\r\n") || raw.ends_with("\n\n")))
            return true;
    }
    return false;
}

// False when the connection is to be closed.
bool HttpFront::ServeRequest(socket_t socket, Transport& transport, bool last) {
    std::string raw;
    if (!ReadHead(transport, raw))
        return false;
    Exchange exchange{.head = ParseRequestHead(raw, transport.Secure()), .fault = {}};
    exchange.fault = chooseFault_(exchange.head);

    // A slow line has a small window: without this the system would take in megabytes at once and
    // the client would be done sending long before the service has read the request.
    if (exchange.fault && exchange.fault->readBytesPerSecond != 0)
        SetOption(socket, SO_RCVBUF, 256 * 1024);
    ExchangeStream stream(*this, socket, transport, std::move(raw), exchange.fault);
    bool closed = false;
    currentExchange = &exchange;
    const bool served = process_request(stream, last, closed, nullptr);
    currentExchange = nullptr;
    if (served && exchange.fault &&
        !PlayAnswer(socket, transport,
                    exchange.fault->raw.empty() ? stream.Answer() : exchange.fault->raw,
                    *exchange.fault)) {
        return false;
    }
    if (!served || closed || last) {
        transport.End();
        return false;
    }
    return true;
}

// Sends an answer as the fault wants it. False when the connection was broken off.
bool HttpFront::PlayAnswer(socket_t socket, Transport& transport, std::string_view answer,
                           const Fault& fault) {
    if (!Pause(fault.delay))
        return false;
    auto rest = answer.substr(0, CutAt(answer, fault.close));
    const std::size_t piece = fault.pieceBytes == 0 ? rest.size() : fault.pieceBytes;
    while (!rest.empty()) {
        if (!transport.Write(rest.substr(0, piece)))
            return false;
        rest.remove_prefix(std::min(piece, rest.size()));
        if (fault.pause.count() > 0 && !Pause(fault.pause))
            return false;
    }
    if (fault.reset) {
        const linger now{.l_onoff = 1, .l_linger = 0};
        ::setsockopt(socket, SOL_SOCKET, SO_LINGER, &now, sizeof now);
    }
    return fault.close == Fault::Close::No && !fault.reset;
}

} // namespace devservice
