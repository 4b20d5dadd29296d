#include "devservice/transport.h"

#include <openssl/err.h>

#include <sys/socket.h>

namespace devservice {
namespace {

class PlainTransport : public Transport {
  public:
    explicit PlainTransport(int socket) : socket_(socket) {}

    ssize_t Read(char* buffer, std::size_t size) override {
        return ::recv(socket_, buffer, size, 0);
    }

    bool Write(std::string_view bytes) override {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent <= 0)
                return false;
            bytes.remove_prefix(static_cast<std::size_t>(sent));
        }
        return true;
    }

  private:
    int socket_;
};

class TlsTransport : public Transport {
  public:
    explicit TlsTransport(OpenSslPtr<SSL> connection) : connection_(std::move(connection)) {}

    ssize_t Read(char* buffer, std::size_t size) override {
        std::size_t got = 0;
        if (SSL_read_ex(connection_.get(), buffer, size, &got) == 1)
            return static_cast<ssize_t>(got);
        const bool ended = SSL_get_error(connection_.get(), 0) == SSL_ERROR_ZERO_RETURN;
        ERR_clear_error();
        return ended ? 0 : -1;
    }

    bool Write(std::string_view bytes) override {
        std::size_t sent = 0;
        const bool good = bytes.empty() ||
                          SSL_write_ex(connection_.get(), bytes.data(), bytes.size(), &sent) == 1;
        ERR_clear_error();
        return good;
    }

    bool HasBuffered() const override { return SSL_pending(connection_.get()) > 0; }

    void End() override {
        SSL_shutdown(connection_.get());
        ERR_clear_error();
    }

    bool Secure() const override { return true; }

  private:
    OpenSslPtr<SSL> connection_;
};

} // namespace

std::unique_ptr<Transport> MakePlainTransport(int socket) {
    return std::make_unique<PlainTransport>(socket);
}

std::unique_ptr<Transport> MakeTlsTransport(int socket, SSL_CTX* context) {
    OpenSslPtr<SSL> connection(SSL_new(context));
    if (!connection || SSL_set_fd(connection.get(), socket) != 1 ||
        SSL_accept(connection.get()) != 1) {
        ERR_clear_error(); // a client that does not like the certificate: its right
        return nullptr;
    }
    return std::make_unique<TlsTransport>(std::move(connection));
}

bool StartsWithTls(int socket) {
    constexpr char handshakeRecord = 0x16;
    char first = 0;
    return ::recv(socket, &first, 1, MSG_PEEK) == 1 && first == handshakeRecord;
}

} // namespace devservice
