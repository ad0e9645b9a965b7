#include "tests/common/HttpTestServer.h"

#include <openssl/pem.h>
#include <openssl/x509v3.h>

#include <algorithm>
#include <arpa/inet.h>
#include <csignal>
#include <cstdlib>
#include <netinet/in.h>
#include <pthread.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace ca_test {
namespace {

void Require(bool condition, const char* what) {
    if (!condition) {
        throw std::runtime_error(what);
    }
}

// A socket bound to a free loopback port, which it stores.
int BindLoopback(std::uint16_t& port) {
    const int handle = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address;
    auto* const generic = reinterpret_cast<sockaddr*>(&address);
    Require(handle >= 0 && bind(handle, generic, length) == 0 &&
                getsockname(handle, generic, &length) == 0,
            "no loopback socket");
    port = ntohs(address.sin_port);
    return handle;
}

std::wstring LoopbackUrl(const wchar_t* scheme, std::uint16_t port, const std::wstring& path) {
    return std::wstring(scheme) + L"://127.0.0.1:" + std::to_wstring(port) + path;
}

Identity MakeUnsigned(const char* commonName, long serial) {
    Identity identity;
    identity.key.reset(EVP_PKEY_Q_keygen(nullptr, nullptr, "EC", "P-256"));
    identity.certificate.reset(X509_new());
    X509* const certificate = identity.certificate.get();
    X509_set_version(certificate, X509_VERSION_3);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate), serial);
    X509_gmtime_adj(X509_getm_notBefore(certificate), -3600);
    X509_gmtime_adj(X509_getm_notAfter(certificate), 3600);
    X509_set_pubkey(certificate, identity.key.get());
    X509_NAME_add_entry_by_txt(X509_get_subject_name(certificate), "CN", MBSTRING_ASC,
                               reinterpret_cast<const unsigned char*>(commonName), -1, -1, 0);
    return identity;
}

void AddExtension(X509* certificate, int nid, const char* value) {
    const std::unique_ptr<X509_EXTENSION, void (*)(X509_EXTENSION*)> extension(
        X509V3_EXT_conf_nid(nullptr, nullptr, nid, value), X509_EXTENSION_free);
    Require(extension && X509_add_ext(certificate, extension.get(), -1) == 1, "no extension");
}

void Sign(Identity& identity, const Identity& issuer) {
    X509_set_issuer_name(identity.certificate.get(),
                         X509_get_subject_name(issuer.certificate.get()));
    Require(X509_sign(identity.certificate.get(), issuer.key.get(), EVP_sha256()) != 0,
            "not signed");
}

}  // namespace

std::string Identity::Pem() const {
    const std::unique_ptr<BIO, int (*)(BIO*)> memory(BIO_new(BIO_s_mem()), BIO_free);
    Require(PEM_write_bio_X509(memory.get(), certificate.get()) == 1, "no PEM");
    char* text = nullptr;
    const long length = BIO_get_mem_data(memory.get(), &text);
    return std::string(text, static_cast<std::size_t>(length));
}

Identity MakeRoot() {
    Identity root = MakeUnsigned("Test root", 1);
    AddExtension(root.certificate.get(), NID_basic_constraints, "critical,CA:TRUE");
    Sign(root, root);
    return root;
}

Identity MakeServer(const Identity& root, const std::string& alternativeName,
                    const char* commonName) {
    Identity server = MakeUnsigned(commonName, 2);
    if (!alternativeName.empty()) {
        AddExtension(server.certificate.get(), NID_subject_alt_name, alternativeName.c_str());
    }
    Sign(server, root);
    return server;
}

std::string Connection::Read() {
    char buffer[65536];
    const ssize_t size = m_tls != nullptr ? SSL_read(m_tls, buffer, sizeof buffer)
                                          : recv(m_socket, buffer, sizeof buffer, 0);
    return std::string(buffer, size > 0 ? static_cast<std::size_t>(size) : 0);
}

bool Connection::Write(std::string_view data) {
    while (!data.empty()) {
        const ssize_t size = m_tls != nullptr
                                 ? SSL_write(m_tls, data.data(), static_cast<int>(data.size()))
                                 : send(m_socket, data.data(), data.size(), MSG_NOSIGNAL);
        if (size <= 0) {
            return false;
        }
        data.remove_prefix(static_cast<std::size_t>(size));
    }
    return true;
}

HttpTestServer::HttpTestServer(Handler handler, const Identity* identity, Reading reading)
    : m_handler(std::move(handler)), m_reading(reading) {
    if (identity != nullptr) {
        m_tlsContext.reset(SSL_CTX_new(TLS_server_method()));
        SSL_CTX_use_certificate(m_tlsContext.get(), identity->certificate.get());
        SSL_CTX_use_PrivateKey(m_tlsContext.get(), identity->key.get());
    }
    m_listener = BindLoopback(m_port);
    Require(listen(m_listener, 64) == 0, "not listening");
    m_acceptor = std::thread([this] { Accept(); });
}

HttpTestServer::~HttpTestServer() {
    shutdown(m_listener, SHUT_RDWR);  // wakes the acceptor
    m_acceptor.join();
    close(m_listener);
    {
        const std::lock_guard lock(m_mutex);
        for (const int open : m_sockets) {
            shutdown(open, SHUT_RDWR);
        }
    }
    for (std::thread& worker : m_workers) {  // the acceptor, who adds to them, is gone
        worker.join();
    }
}

std::wstring HttpTestServer::Url(const std::wstring& path) const {
    return LoopbackUrl(m_tlsContext ? L"https" : L"http", m_port, path);
}

std::vector<Request> HttpTestServer::Requests() const {
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

void HttpTestServer::Accept() {
    for (;;) {
        const int connection = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
        if (connection < 0) {
            return;
        }
        const std::lock_guard lock(m_mutex);
        m_sockets.push_back(connection);
        m_workers.emplace_back([this, connection] { Serve(connection); });
    }
}

void HttpTestServer::Serve(int socket) {
    // Of this thread only: the process keeps the default, under which a client that lets the signal
    // through would end it.
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &pipe, nullptr);

    std::unique_ptr<SSL, void (*)(SSL*)> tls(nullptr, SSL_free);
    if (m_tlsContext) {
        tls.reset(SSL_new(m_tlsContext.get()));
        SSL_set_fd(tls.get(), socket);
    }
    if (!tls || SSL_accept(tls.get()) == 1) {
        Connection connection(socket, tls.get());
        Request request = ReadRequest(connection);
        if (!request.head.empty()) {
            const std::lock_guard lock(m_mutex);
            m_requests.push_back(request);
        }
        if (!request.head.empty() || m_reading == Reading::kNothing) {
            m_handler(connection, request);
        }
        if (tls) {
            SSL_shutdown(tls.get());
        }
    }
    const std::lock_guard lock(m_mutex);
    m_sockets.erase(std::find(m_sockets.begin(), m_sockets.end(), socket));
    close(socket);
}

// Empty when the client leaves before the header is complete.
Request HttpTestServer::ReadRequest(Connection& connection) const {
    static constexpr std::string_view kLength = "Content-Length: ";
    std::string received;
    const auto readMore = [&] {
        const std::string part = connection.Read();
        received += part;
        return !part.empty();
    };
    if (m_reading == Reading::kNothing) {
        return {};
    }
    std::size_t headEnd = std::string::npos;
    while ((headEnd = received.find("\r\n\r\n")) == std::string::npos) {
        if (!readMore()) {
            return {};
        }
    }
    const std::size_t bodyStart = headEnd + 4;
    const std::string head = received.substr(0, headEnd + 2);
    const std::size_t field = head.find(kLength);
    const std::size_t length =
        field != std::string::npos
            ? std::strtoul(head.c_str() + field + kLength.size(), nullptr, 10)
            : 0;
    while (m_reading == Reading::kAll && received.size() - bodyStart < length && readMore()) {
    }
    return {head, received.substr(bodyStart)};
}

std::string Ok(const std::string& body) {
    return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\nConnection: close\r\n\r\n" + body;
}

std::string RedirectTo(const std::string& place, int status) {
    return "HTTP/1.1 " + std::to_string(status) + " Moved\r\nLocation: " + place +
           "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n";
}

HttpTestServer::Handler Canned(const std::string& answer) {
    return [answer](Connection& connection, const Request&) { connection.Write(answer); };
}

HttpTestServer::Handler Endless(const std::string& answer, const std::string& part,
                                std::chrono::milliseconds pause) {
    return [=](Connection& connection, const Request&) {
        bool isConnected = connection.Write(answer);
        while (isConnected) {
            std::this_thread::sleep_for(pause);
            isConnected = connection.Write(part);
        }
    };
}

ClosedPort::ClosedPort() : m_socket(BindLoopback(m_port)) {}

ClosedPort::~ClosedPort() {
    close(m_socket);
}

std::wstring ClosedPort::Url(const std::wstring& path) const {
    return LoopbackUrl(L"http", m_port, path);
}

}  // namespace ca_test
