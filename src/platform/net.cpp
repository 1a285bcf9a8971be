#include "platform/net.h"

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/clock.h"

namespace zel::platform {
namespace {

int pending_error(int fd) {
    int error = 0;
    socklen_t len = sizeof error;
    if (::getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &len) != 0) {
        return errno;
    }
    return error;
}

sockaddr_in ipv4(uint32_t address, uint16_t port) {
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(port);
    sa.sin_addr.s_addr = address;
    return sa;
}

} // namespace

int last_socket_error() {
    return errno;
}

uint32_t parse_ipv4(const char *text) {
    if (text == nullptr) {
        return INADDR_NONE;
    }
    return ::inet_addr(text);
}

std::string ipv4_text(uint32_t networkOrder) {
    in_addr a{};
    a.s_addr = networkOrder;
    char buf[INET_ADDRSTRLEN] = {};
    ::inet_ntop(AF_INET, &a, buf, sizeof buf);
    return buf;
}

int tcp_socket_bound() {
    const int fd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, IPPROTO_TCP);
    if (fd < 0) {
        return kInvalidSocket;
    }
    // The port of a bind to port 0 is left to the connect, which can reuse a local port for
    // another destination: a bind alone must find a port no socket holds, TIME_WAIT ones
    // included, which grows slow and then fails on a host that talks to many controllers.
    const int one = 1;
    (void)::setsockopt(fd, IPPROTO_IP, IP_BIND_ADDRESS_NO_PORT, &one, sizeof one);
    const sockaddr_in any = ipv4(INADDR_ANY, 0);
    if (::bind(fd, reinterpret_cast<const sockaddr *>(&any), sizeof any) != 0) {
        ::close(fd);
        return kInvalidSocket;
    }
    return fd;
}

bool set_blocking(int fd, bool blocking) {
    const int flags = ::fcntl(fd, F_GETFL, 0);
    if (flags < 0) {
        return false;
    }
    const int wanted = blocking ? (flags & ~O_NONBLOCK) : (flags | O_NONBLOCK);
    return ::fcntl(fd, F_SETFL, wanted) == 0;
}

ConnectStart connect_start(int fd, uint32_t address, uint16_t port) {
    const sockaddr_in sa = ipv4(address, port);
    if (::connect(fd, reinterpret_cast<const sockaddr *>(&sa), sizeof sa) == 0) {
        return ConnectStart::Connected;
    }
    return errno == EINPROGRESS || errno == EINTR ? ConnectStart::Pending : ConnectStart::Failed;
}

WaitResult wait_connected(int fd, uint32_t timeoutMs) {
    pollfd p{fd, POLLOUT, 0};
    WaitResult r;
    r.count = current_clock().poll(&p, 1, timeoutMs);
    // A failed connection makes the socket writable with an error pending; elsewhere it lands
    // in the exception set, which is what callers test.
    if (r.count > 0 && ((p.revents & (POLLERR | POLLHUP | POLLNVAL)) != 0 || pending_error(fd))) {
        r.exception = true;
    }
    return r;
}

WaitResult wait_writable(int fd, uint32_t timeoutMs) {
    pollfd p{fd, POLLOUT, 0};
    WaitResult r;
    r.count = current_clock().poll(&p, 1, timeoutMs);
    if (r.count > 0 && (p.revents & (POLLERR | POLLNVAL | POLLPRI)) != 0) {
        r.exception = true;
    }
    return r;
}

WaitResult wait_readable(int fd, uint32_t timeoutMs) {
    pollfd p{fd, POLLIN | POLLPRI, 0};
    WaitResult r;
    r.count = current_clock().poll(&p, 1, timeoutMs);
    // An error with nothing to read (a connection that never came up) is the exception case;
    // a reset with data or an end of stream still goes to the read, which then fails.
    if (r.count > 0 && ((p.revents & (POLLPRI | POLLNVAL)) != 0 ||
                        ((p.revents & POLLERR) != 0 && (p.revents & POLLIN) == 0))) {
        r.exception = true;
    }
    return r;
}

ssize_t socket_send(int fd, const uint8_t *data, std::size_t len) {
    // MSG_NOSIGNAL: a peer that has gone must give a failed send, not kill the host process.
    ssize_t n;
    do {
        n = ::send(fd, data, len, MSG_NOSIGNAL);
    } while (n < 0 && errno == EINTR);
    return n;
}

ssize_t socket_recv(int fd, uint8_t *buf, std::size_t len) {
    ssize_t n;
    do {
        n = ::recv(fd, buf, len, 0);
    } while (n < 0 && errno == EINTR);
    return n;
}

void socket_shutdown_close(int fd) {
    ::shutdown(fd, SHUT_RDWR);
    ::close(fd);
}

void socket_close(int fd) {
    ::close(fd);
}

int list_ipv4_addresses(std::vector<InterfaceAddress> &out) {
    out.clear();
    ifaddrs *list = nullptr;
    if (::getifaddrs(&list) != 0) {
        return errno != 0 ? errno : -1;
    }
    std::vector<std::string> seen; // interfaces that already gave their first address
    for (const ifaddrs *it = list; it != nullptr; it = it->ifa_next) {
        if (it->ifa_addr == nullptr || it->ifa_addr->sa_family != AF_INET) continue;
        if ((it->ifa_flags & IFF_UP) == 0 || (it->ifa_flags & IFF_LOOPBACK) != 0) continue;
        const std::string name = it->ifa_name != nullptr ? it->ifa_name : "";
        bool known = false;
        for (const auto &s : seen)
            known = known || s == name;
        if (known) continue;
        seen.push_back(name);
        const auto *sa = reinterpret_cast<const sockaddr_in *>(it->ifa_addr);
        out.push_back({ipv4_text(sa->sin_addr.s_addr), name});
    }
    ::freeifaddrs(list);
    return 0;
}

int udp_socket() {
    const int fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, IPPROTO_UDP);
    return fd < 0 ? kInvalidSocket : fd;
}

void set_broadcast_and_reuse(int fd) {
    // The option length is that of an int: Linux refuses shorter ones.
    const int one = 1;
    ::setsockopt(fd, SOL_SOCKET, SO_BROADCAST, &one, sizeof one);
    ::setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
}

bool bind_ipv4(int fd, uint32_t address, uint16_t port) {
    const sockaddr_in sa = ipv4(address, port);
    return ::bind(fd, reinterpret_cast<const sockaddr *>(&sa), sizeof sa) == 0;
}

ssize_t send_datagram(int fd, uint32_t address, uint16_t port, const uint8_t *data,
                      std::size_t len) {
    const sockaddr_in sa = ipv4(address, port);
    return ::sendto(fd, data, len, MSG_NOSIGNAL, reinterpret_cast<const sockaddr *>(&sa),
                    sizeof sa);
}

std::size_t wait_any_readable(const std::vector<int> &fds, uint32_t timeoutMs) {
    std::vector<pollfd> polls;
    polls.reserve(fds.size());
    for (const int fd : fds) {
        polls.push_back({fd, POLLIN, 0});
    }
    if (current_clock().poll(polls.data(), polls.size(), timeoutMs) <= 0) {
        return fds.size();
    }
    for (std::size_t i = 0; i < polls.size(); ++i) {
        if ((polls[i].revents & (POLLIN | POLLERR)) != 0) {
            return i;
        }
    }
    return fds.size();
}

ssize_t receive_datagram(int fd, uint8_t *buf, std::size_t len, uint32_t &senderAddress,
                         uint32_t &senderLength) {
    sockaddr_in from{};
    socklen_t fromLen = sizeof from;
    ssize_t n;
    do {
        n = ::recvfrom(fd, buf, len, 0, reinterpret_cast<sockaddr *>(&from), &fromLen);
    } while (n < 0 && errno == EINTR);
    senderAddress = from.sin_addr.s_addr;
    senderLength = fromLen;
    return n;
}

} // namespace zel::platform
