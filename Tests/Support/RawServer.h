#pragma once

#include <memory>
#include <string>

namespace anadrome::testing_support {

/// What a server does with whoever asks it.
struct RawAnswer {
    /// Sent as they are when the request's head has come.
    std::string bytes{};
    /// Sent again and again after that, as fast as they are taken or one every 20 ms.
    std::string repeated{};
    bool isTrickle = false;
    /// Otherwise the connection stays open.
    bool closes = true;
};

class Certificate;

/// A server on a free port of this machine that says what a real one never should. It works on the main
/// thread's event loop.
class RawServer {
public:
    /// https with a certificate, else http.
    explicit RawServer(RawAnswer answer, const Certificate* certificate = nullptr);
    ~RawServer();

    /// "http://127.0.0.1:PORT/" or "https://...".
    std::string address() const;
    /// All that was received, of all connections.
    const std::string& received() const;
    /// Bytes that were handed to the system to be sent.
    std::size_t sentByteCount() const;

private:
    class Server;
    std::unique_ptr<Server> m_server;
};

/// An answer with a head and a body, closing the connection.
std::string httpAnswer(const std::string& status, const std::string& headers = "",
                       const std::string& body = "");

} // namespace anadrome::testing_support
