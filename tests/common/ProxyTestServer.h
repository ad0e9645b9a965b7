#pragma once

#include "tests/common/HttpTestServer.h"

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace ca_test {

/// A proxy on a free port of 127.0.0.1. Whatever host it is asked for, it connects to that port of
/// 127.0.0.1: names need not exist, which shows who looks them up.
class ProxyTestServer {
  public:
    enum class Kind {
        kHttp,   ///< CONNECT, and requests with absolute targets
        kSocks,  ///< versions 4, 4a and 5 (RFC 1928, RFC 1929)
    };

    /// \param login  "name:password" that a client must give, in HTTP or SOCKS 5; empty: none.
    explicit ProxyTestServer(Kind kind, std::string login = {});

    std::uint16_t Port() const { return m_server.Port(); }
    /// "host:port" of every connection that was asked for, also when it was refused.
    std::vector<std::string> Targets() const;

  private:
    void ServeHttp(Connection& client);
    void ServeSocks(Connection& client);
    bool AuthenticateSocks5(Connection& client) const;
    int Open(const std::string& host, std::uint16_t port);

    std::string m_login;
    mutable std::mutex m_mutex;
    std::vector<std::string> m_targets;
    HttpTestServer m_server;  // last: its threads use the members above
};

}  // namespace ca_test
