#pragma once

#include <openssl/ssl.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace ca_test {

using PrivateKey = std::unique_ptr<EVP_PKEY, void (*)(EVP_PKEY*)>;
using Certificate = std::unique_ptr<X509, void (*)(X509*)>;

/// A key with its certificate, made on the spot.
struct Identity {
    PrivateKey key{nullptr, EVP_PKEY_free};
    Certificate certificate{nullptr, X509_free};

    std::string Pem() const;
};

/// A self-signed root.
Identity MakeRoot();
/// A server certificate of `root` for `alternativeName`, such as "IP:127.0.0.1"; empty: none.
Identity MakeServer(const Identity& root, const std::string& alternativeName,
                    const char* commonName = "Test server");

/// The server's end of one connection, plain or TLS.
class Connection {
  public:
    Connection(int socket, SSL* tls) : m_socket(socket), m_tls(tls) {}

    /// At least one octet; empty at the end of the connection.
    std::string Read();
    /// False when the client is gone.
    bool Write(std::string_view data);
    /// For reading and writing past this object; plain connections only.
    int Socket() const { return m_socket; }

  private:
    int m_socket;
    SSL* m_tls;  // null: plain
};

struct Request {
    std::string head;  ///< request line and header lines
    std::string body;
};

/// An HTTP server on a free port of 127.0.0.1: one request a connection, a thread for each.
/// It does as its handler says, so it can also behave as badly as a test needs.
class HttpTestServer {
  public:
    using Handler = std::function<void(Connection& connection, const Request& request)>;

    /// How much of a request is read before the handler gets its turn.
    enum class Reading { kNothing, kHead, kAll };

    /// \param identity  null: plain HTTP.
    explicit HttpTestServer(Handler handler, const Identity* identity = nullptr,
                            Reading reading = Reading::kAll);
    /// Ends open connections and waits for their threads.
    ~HttpTestServer();
    HttpTestServer(const HttpTestServer&) = delete;
    HttpTestServer& operator=(const HttpTestServer&) = delete;

    std::uint16_t Port() const { return m_port; }
    /// "http://127.0.0.1:<port>" or https, with `path` after it.
    std::wstring Url(const std::wstring& path = L"/") const;
    /// The complete requests so far, in order of their arrival.
    std::vector<Request> Requests() const;

  private:
    void Accept();
    void Serve(int socket);
    Request ReadRequest(Connection& connection) const;

    Handler m_handler;
    Reading m_reading;
    std::unique_ptr<SSL_CTX, void (*)(SSL_CTX*)> m_tlsContext{nullptr, SSL_CTX_free};
    int m_listener = -1;
    std::uint16_t m_port = 0;
    mutable std::mutex m_mutex;  // guards what follows
    std::vector<Request> m_requests;
    std::vector<int> m_sockets;  // open connections
    std::list<std::thread> m_workers;
    std::thread m_acceptor;
};

inline std::string Narrow(const std::wstring& ascii) {
    return std::string(ascii.begin(), ascii.end());
}

/// An answer of status 200 with its length.
std::string Ok(const std::string& body);
/// An answer that sends the client to another place.
std::string RedirectTo(const std::string& place, int status = 302);

/// Sends the same octets to everybody and hangs up.
HttpTestServer::Handler Canned(const std::string& answer);
/// Sends `answer`, then `part` again and again until the client has gone.
HttpTestServer::Handler Endless(const std::string& answer, const std::string& part,
                                std::chrono::milliseconds pause);

/// A port of 127.0.0.1 that refuses connections while the object lives.
class ClosedPort {
  public:
    ClosedPort();
    ~ClosedPort();
    ClosedPort(const ClosedPort&) = delete;
    ClosedPort& operator=(const ClosedPort&) = delete;
    std::wstring Url(const std::wstring& path = L"/") const;

  private:
    std::uint16_t m_port = 0;
    int m_socket;
};

}  // namespace ca_test
