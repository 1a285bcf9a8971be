// Sockets and the host's interface addresses: the only code that calls the socket layer.
// Waits use poll(), so a host with more than FD_SETSIZE descriptors open is safe.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zel::platform {

inline constexpr int kInvalidSocket = -1;

// The last error of the socket layer in this thread (errno), for results that report it.
int last_socket_error();

// IPv4 text to a network-order address the way the classic inet_addr reads it ("127.1" is
// 127.0.0.1); 0xFFFFFFFF for text that is not an address, also for "" and null.
uint32_t parse_ipv4(const char *text);
std::string ipv4_text(uint32_t networkOrder);

// --- TCP ---------------------------------------------------------------------------------

// A TCP socket bound to 0.0.0.0, port 0; kInvalidSocket on failure.
int tcp_socket_bound();
bool set_blocking(int fd, bool blocking);

enum class ConnectStart { Connected, Pending, Failed };
ConnectStart connect_start(int fd, uint32_t address, uint16_t port);

// The outcome of waiting on one socket, in the terms of a select with an exception set.
struct WaitResult {
    int count = 0;          // <0 the wait failed, 0 timed out, 1 the socket is ready
    bool exception = false; // the connection failed or urgent data is pending
};
// Waits until a pending connection is settled: `exception` when it failed (refused,
// unreachable), which is what a select's exception set reports for it on other systems.
WaitResult wait_connected(int fd, uint32_t timeoutMs);
WaitResult wait_writable(int fd, uint32_t timeoutMs);
WaitResult wait_readable(int fd, uint32_t timeoutMs);

// One send call without flags that matter (no SIGPIPE); the count or -1.
ssize_t socket_send(int fd, const uint8_t *data, std::size_t len);
// One recv call; the count, 0 at the end of the stream, or -1.
ssize_t socket_recv(int fd, uint8_t *buf, std::size_t len);
// Shuts down both directions and closes.
void socket_shutdown_close(int fd);
void socket_close(int fd);

// --- UDP ---------------------------------------------------------------------------------

struct InterfaceAddress {
    std::string address; // dotted text
    std::string name;    // the interface's name
};
// The first IPv4 address of every interface that is up, loopback excluded, in the kernel's
// order. 0, or the error code of the listing.
int list_ipv4_addresses(std::vector<InterfaceAddress> &out);

// A UDP socket, or kInvalidSocket with the error in last_socket_error().
int udp_socket();
// Sets the broadcast and address-reuse options; the results are not needed by anyone.
void set_broadcast_and_reuse(int fd);
bool bind_ipv4(int fd, uint32_t address, uint16_t port);
ssize_t send_datagram(int fd, uint32_t address, uint16_t port, const uint8_t *data,
                      std::size_t len);

// Waits up to `timeoutMs` for any of `fds` to become readable (with no socket at all it just
// waits); the index in `fds` of the first ready socket in list order, or `fds.size()`.
std::size_t wait_any_readable(const std::vector<int> &fds, uint32_t timeoutMs);

// One datagram; the count or -1. `senderAddress` is in network order.
ssize_t receive_datagram(int fd, uint8_t *buf, std::size_t len, uint32_t &senderAddress,
                         uint32_t &senderLength);

} // namespace zel::platform
