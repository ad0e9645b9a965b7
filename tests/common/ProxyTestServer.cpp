#include "tests/common/ProxyTestServer.h"

#include <openssl/evp.h>

#include <arpa/inet.h>
#include <cstdlib>
#include <netinet/in.h>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace ca_test {
namespace {

constexpr std::string_view kAsksWho =
    "HTTP/1.1 407 Who\r\nProxy-Authenticate: Basic realm=\"x\"\r\n"
    "Content-Length: 0\r\nConnection: close\r\n\r\n";
constexpr std::string_view kBadGateway =
    "HTTP/1.1 502 Unreachable\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";

/// A socket that is closed at the end.
class Handle {
  public:
    explicit Handle(int socket) : m_socket(socket) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (m_socket >= 0) {
            close(m_socket);
        }
    }
    int Get() const { return m_socket; }

  private:
    int m_socket;
};

// Passes octets on both ways until one side ends.
void Relay(int a, int b) {
    pollfd ends[] = {{a, POLLIN, 0}, {b, POLLIN, 0}};
    char buffer[16384];
    while (poll(ends, 2, -1) > 0) {
        for (int i = 0; i < 2; ++i) {
            if (ends[i].revents == 0) {
                continue;
            }
            const ssize_t size = recv(ends[i].fd, buffer, sizeof buffer, 0);
            if (size <= 0 || !Connection(ends[1 - i].fd, nullptr)
                                  .Write({buffer, static_cast<std::size_t>(size)})) {
                return;
            }
        }
    }
}

// Exactly that many octets; fewer at the end of the connection.
std::string Take(const Connection& client, std::size_t size) {
    std::string octets(size, '\0');
    const ssize_t got = size == 0 ? 0 : recv(client.Socket(), octets.data(), size, MSG_WAITALL);
    octets.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
    return octets;
}

std::string TakeUntil(const Connection& client, std::string_view end) {
    std::string octets;
    for (std::string next; !octets.ends_with(end); octets += next) {
        next = Take(client, 1);
        if (next.empty()) {
            return {};
        }
    }
    return octets;
}

// A field after an octet that holds its length.
std::string TakeCounted(const Connection& client) {
    const std::string length = Take(client, 1);
    return length.empty() ? "" : Take(client, static_cast<unsigned char>(length[0]));
}

std::uint16_t TakePort(const Connection& client) {
    const std::string octets = Take(client, 2);
    return octets.size() == 2
               ? static_cast<std::uint16_t>(static_cast<unsigned char>(octets[0]) << 8 |
                                            static_cast<unsigned char>(octets[1]))
               : std::uint16_t{0};
}

std::string DottedAddress(const std::string& octets) {
    char text[INET_ADDRSTRLEN] = "";
    return octets.size() == 4 && inet_ntop(AF_INET, octets.data(), text, sizeof text) != nullptr
               ? text
               : "";
}

std::string BasicCredentials(const std::string& login) {
    std::string text(login.size() * 4 / 3 + 4, '\0');
    text.resize(static_cast<std::size_t>(EVP_EncodeBlock(
        reinterpret_cast<unsigned char*>(text.data()),
        reinterpret_cast<const unsigned char*>(login.data()), static_cast<int>(login.size()))));
    return "Proxy-Authorization: Basic " + text + "\r\n";
}

}  // namespace

ProxyTestServer::ProxyTestServer(Kind kind, std::string login)
    : m_login(std::move(login)),
      m_server(
          [this, kind](Connection& client, const Request&) {
              kind == Kind::kHttp ? ServeHttp(client) : ServeSocks(client);
          },
          nullptr, HttpTestServer::Reading::kNothing) {}

std::vector<std::string> ProxyTestServer::Targets() const {
    const std::lock_guard lock(m_mutex);
    return m_targets;
}

// A connection to that port, or -1.
int ProxyTestServer::Open(const std::string& host, std::uint16_t port) {
    {
        const std::lock_guard lock(m_mutex);
        m_targets.push_back(host + ':' + std::to_string(port));
    }
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) {
        return handle;
    }
    close(handle);
    return -1;
}

void ProxyTestServer::ServeHttp(Connection& client) {
    std::string head = TakeUntil(client, "\r\n\r\n");
    if (!m_login.empty()) {
        const std::string proof = BasicCredentials(m_login);
        const std::size_t place = head.find(proof);
        if (place == std::string::npos) {
            client.Write(kAsksWho);
            return;
        }
        head.erase(place, proof.size());  // for this proxy only
    }
    const bool isTunnel = head.starts_with("CONNECT ");
    const std::size_t start = isTunnel ? 8 : head.find("//") + 2;
    const std::size_t end = head.find_first_of(" /", start);
    const std::string target = head.substr(start, end - start);
    const std::size_t colon = target.rfind(':');
    const auto port = static_cast<std::uint16_t>(
        colon != std::string::npos ? std::strtoul(target.c_str() + colon + 1, nullptr, 10) : 80);
    const Handle server(Open(target.substr(0, colon), port));
    if (server.Get() < 0) {
        client.Write(kBadGateway);
        return;
    }
    if (isTunnel) {
        client.Write("HTTP/1.1 200 Connected\r\n\r\n");
    } else {
        Connection(server.Get(), nullptr).Write(head);
    }
    Relay(client.Socket(), server.Get());
}

bool ProxyTestServer::AuthenticateSocks5(Connection& client) const {
    const std::string methods = TakeCounted(client);
    const char wanted = m_login.empty() ? '\0' : '\2';
    if (methods.find(wanted) == std::string::npos) {
        client.Write("\5\xFF");
        return false;
    }
    client.Write({m_login.empty() ? "\5\0" : "\5\2", 2});
    if (m_login.empty()) {
        return true;
    }
    Take(client, 1);  // version of the exchange
    const std::string name = TakeCounted(client);
    const bool isKnown = name + ':' + TakeCounted(client) == m_login;
    client.Write({isKnown ? "\1\0" : "\1\1", 2});
    return isKnown;
}

void ProxyTestServer::ServeSocks(Connection& client) {
    const bool isVersion5 = Take(client, 1) == "\5";
    std::string host;
    std::uint16_t port = 0;
    if (isVersion5) {
        if (!AuthenticateSocks5(client)) {
            return;
        }
        const std::string command = Take(client, 4);  // version, command, 0, kind of address
        host = command.ends_with('\3') ? TakeCounted(client) : DottedAddress(Take(client, 4));
        port = TakePort(client);
    } else {
        Take(client, 1);  // command
        port = TakePort(client);
        const std::string address = Take(client, 4);
        TakeUntil(client, std::string_view("\0", 1));  // user
        // 4a: an address that cannot be stands for the name after it.
        host = address.starts_with(std::string_view("\0\0\0", 3))
                   ? TakeUntil(client, std::string_view("\0", 1)).c_str()
                   : DottedAddress(address);
    }
    const Handle server(Open(host, port));
    const bool isOpen = server.Get() >= 0;
    if (isVersion5) {
        client.Write({isOpen ? "\5\0\0\1\0\0\0\0\0\0" : "\5\5\0\1\0\0\0\0\0\0", 10});
    } else {
        client.Write({isOpen ? "\0\x5A\0\0\0\0\0\0" : "\0\x5B\0\0\0\0\0\0", 8});
    }
    if (isOpen) {
        Relay(client.Socket(), server.Get());
    }
}

}  // namespace ca_test
