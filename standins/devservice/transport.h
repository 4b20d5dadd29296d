#pragma once
#include "devservice/certificates.h"

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <string_view>

namespace devservice {

/// An accepted connection: bytes in and out, over TCP or TLS. The socket belongs to the caller.
class Transport {
  public:
    virtual ~Transport() = default;
    /// Bytes read, 0 at the end, negative on failure or time-out.
    virtual ssize_t Read(char* buffer, std::size_t size) = 0;
    /// Writes everything; false on failure.
    virtual bool Write(std::string_view bytes) = 0;
    /// True when bytes wait inside, so that the socket alone does not tell.
    [[nodiscard]] virtual bool HasBuffered() const { return false; }
    /// Says good-bye in the protocol's way, where it has one.
    virtual void End() {}
    [[nodiscard]] virtual bool Secure() const { return false; }
};

[[nodiscard]] std::unique_ptr<Transport> MakePlainTransport(int socket);

/// Does the handshake; nothing when it fails.
[[nodiscard]] std::unique_ptr<Transport> MakeTlsTransport(int socket, SSL_CTX* context);

/// True when the first byte of a new connection begins a TLS handshake. Waits for it.
[[nodiscard]] bool StartsWithTls(int socket);

} // namespace devservice
