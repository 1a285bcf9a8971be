#include "sim/protocol/simulator.h"

#include "sim/protocol/sim_dynamic.h"

#include <algorithm>
#include <arpa/inet.h>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include "sim/protocol/describe.h"
#include "sim/protocol/frames.h"

namespace zel::sim {
namespace {

// Drops the oldest entries beyond `limit` (0: no limit). Trimmed in halves, so that a full
// history costs one move per entry on average.
template <class T> void keep_last(std::vector<T> &history, std::size_t limit) {
    if (limit == 0 || history.size() < 2 * limit) return;
    history.erase(history.begin(), history.end() - static_cast<std::ptrdiff_t>(limit));
}

constexpr uint8_t kGroupAck = 0xA0;
constexpr uint8_t kGroupFiles = 0xA1;
constexpr uint8_t kCodeFileBlock = 0x03;
constexpr uint8_t kCodeConfBlock = 0x0C;
constexpr std::size_t kReadChunk = 65536;

bool is_g6_code(uint16_t type) {
    switch (type & 0xFF) {
    case 0x58:
    case 0x62:
    case 0x63:
    case 0x64:
    case 0x66:
    case 0x74:
        return true;
    default:
        return false;
    }
}

[[noreturn]] void fail(const std::string &what) {
    throw std::runtime_error("zel-sim: " + what + ": " + std::strerror(errno));
}

std::string endpoint_text(const sockaddr_in &sa) {
    char text[INET_ADDRSTRLEN] = {};
    ::inet_ntop(AF_INET, &sa.sin_addr, text, sizeof text);
    return std::string(text) + ":" + std::to_string(ntohs(sa.sin_port));
}

std::string address_text(in_addr a) {
    char text[INET_ADDRSTRLEN] = {};
    ::inet_ntop(AF_INET, &a, text, sizeof text);
    return text;
}

void write_all(int fd, const std::vector<uint8_t> &bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0 && errno == EAGAIN) {
            pollfd p{fd, POLLOUT, 0};
            ::poll(&p, 1, 1000);
            continue;
        }
        if (n <= 0) return;
        done += static_cast<std::size_t>(n);
    }
}

// A UDP socket on 0.0.0.0:port that hears broadcasts and tells which local address a datagram
// came in on.
int open_udp(int port) {
    const int fd = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (fd < 0) fail("UDP socket");
    const int one = 1;
    ::setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    ::setsockopt(fd, SOL_SOCKET, SO_BROADCAST, &one, sizeof one);
    ::setsockopt(fd, IPPROTO_IP, IP_PKTINFO, &one, sizeof one);
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_port = htons(static_cast<uint16_t>(port));
    sa.sin_addr.s_addr = htonl(INADDR_ANY);
    if (::bind(fd, reinterpret_cast<sockaddr *>(&sa), sizeof sa) != 0) {
        ::close(fd);
        fail("UDP bind to port " + std::to_string(port));
    }
    return fd;
}

uint16_t bound_port(int fd) {
    sockaddr_in sa{};
    socklen_t len = sizeof sa;
    ::getsockname(fd, reinterpret_cast<sockaddr *>(&sa), &len);
    return ntohs(sa.sin_port);
}

struct Datagram {
    std::vector<uint8_t> bytes;
    sockaddr_in from{};
    std::string local;
};

bool receive(int fd, Datagram &d) {
    d.bytes.assign(kReadChunk, 0);
    iovec iov{d.bytes.data(), d.bytes.size()};
    alignas(cmsghdr) char control[256];
    msghdr msg{};
    msg.msg_name = &d.from;
    msg.msg_namelen = sizeof d.from;
    msg.msg_iov = &iov;
    msg.msg_iovlen = 1;
    msg.msg_control = control;
    msg.msg_controllen = sizeof control;
    const ssize_t n = ::recvmsg(fd, &msg, 0);
    if (n < 0) return false;
    d.bytes.resize(static_cast<std::size_t>(n));
    for (cmsghdr *c = CMSG_FIRSTHDR(&msg); c != nullptr; c = CMSG_NXTHDR(&msg, c)) {
        if (c->cmsg_level == IPPROTO_IP && c->cmsg_type == IP_PKTINFO) {
            in_pktinfo info{};
            std::memcpy(&info, CMSG_DATA(c), sizeof info);
            d.local = address_text(info.ipi_spec_dst);
        }
    }
    return true;
}

} // namespace

const char *transport_name(Transport transport) {
    switch (transport) {
    case Transport::Tcp:
        return "tcp";
    case Transport::Udp:
        return "udp";
    case Transport::Serial:
        return "serial";
    }
    return "?";
}

bool Faults::any() const {
    return silent || splitAnswer || errorCode != 0 || padIndex >= 0 || badHeaderCheck || badCrc ||
           headerVersion >= 0 || closeAfterBlocks >= 0;
}

uint8_t answer_version_for(uint16_t controllerType) {
    return is_g6_code(controllerType) ? 7 : 5;
}

struct Simulator::Impl {
    struct Connection {
        int fd = -1;
        Session session;
        FrameSplitter splitter;
    };

    Simulator &sim;
    int wake[2] = {-1, -1};
    int listenFd = -1;
    int udpFd = -1;
    int atFd = -1;
    int ptyMaster = -1;
    int ptySlave = -1; // kept open so that the line survives the host closing its end
    Session serialSession;
    FrameSplitter serialSplitter;
    std::vector<std::unique_ptr<Connection>> connections;
    std::thread thread;

    explicit Impl(Simulator &s) : sim(s) {}

    ~Impl() {
        for (auto &c : connections)
            ::close(c->fd);
        for (const int fd : {wake[0], wake[1], listenFd, udpFd, atFd, ptyMaster, ptySlave}) {
            if (fd >= 0) ::close(fd);
        }
    }

    void open_tcp(const std::string &address, int port) {
        listenFd = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (listenFd < 0) fail("TCP socket");
        const int one = 1;
        ::setsockopt(listenFd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
        sockaddr_in sa{};
        sa.sin_family = AF_INET;
        sa.sin_port = htons(static_cast<uint16_t>(port));
        if (::inet_pton(AF_INET, address.c_str(), &sa.sin_addr) != 1) {
            errno = EINVAL;
            fail("bind address " + address);
        }
        if (::bind(listenFd, reinterpret_cast<sockaddr *>(&sa), sizeof sa) != 0) {
            fail("TCP bind to " + address + ":" + std::to_string(port));
        }
        if (::listen(listenFd, 16) != 0) fail("TCP listen");
    }

    void open_pty() {
        ptyMaster = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (ptyMaster < 0 || ::grantpt(ptyMaster) != 0 || ::unlockpt(ptyMaster) != 0) {
            fail("pseudo-terminal");
        }
        char name[128] = {};
        if (::ptsname_r(ptyMaster, name, sizeof name) != 0) fail("pseudo-terminal name");
        ptySlave = ::open(name, O_RDWR | O_NOCTTY | O_CLOEXEC);
        if (ptySlave < 0) fail("pseudo-terminal slave");
        // Raw from the start: with the default echo the line would hand every answer back.
        termios tio{};
        ::tcgetattr(ptySlave, &tio);
        ::cfmakeraw(&tio);
        ::tcsetattr(ptySlave, TCSANOW, &tio);
        serialSession.transport = Transport::Serial;
        serialSession.peer = name;
        sim.m_serialPath = name;
    }

    void send_outcome(int fd, const Outcome &outcome) {
        for (std::size_t i = 0; i < outcome.segments.size(); ++i) {
            if (i > 0) {
                std::this_thread::sleep_for(std::chrono::milliseconds(sim.m_config.splitDelayMs));
            }
            write_all(fd, outcome.segments[i]);
        }
    }

    void on_accept() {
        sockaddr_in peer{};
        socklen_t len = sizeof peer;
        const int fd = ::accept4(listenFd, reinterpret_cast<sockaddr *>(&peer), &len, SOCK_CLOEXEC);
        if (fd < 0) return;
        const int one = 1;
        // Segments of a split answer must leave one by one.
        ::setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
        sockaddr_in local{};
        socklen_t localLen = sizeof local;
        ::getsockname(fd, reinterpret_cast<sockaddr *>(&local), &localLen);
        auto c = std::make_unique<Connection>();
        c->fd = fd;
        c->session.transport = Transport::Tcp;
        c->session.peer = endpoint_text(peer);
        c->session.local = address_text(local.sin_addr);
        connections.push_back(std::move(c));
    }

    // false when the connection is to be closed.
    bool on_connection(Connection &c) {
        std::vector<uint8_t> buf(kReadChunk);
        const ssize_t n = ::read(c.fd, buf.data(), buf.size());
        if (n <= 0) return false;
        c.splitter.feed(buf.data(), static_cast<std::size_t>(n));
        while (auto frame = c.splitter.next()) {
            const Outcome outcome = sim.handle_frame(c.session, *frame);
            send_outcome(c.fd, outcome);
            if (outcome.close) return false;
        }
        return true;
    }

    void on_udp() {
        Datagram d;
        if (!receive(udpFd, d)) return;
        Session session;
        session.transport = Transport::Udp;
        session.peer = endpoint_text(d.from);
        session.local = d.local;
        FrameSplitter splitter;
        splitter.feed(d.bytes.data(), d.bytes.size());
        while (auto frame = splitter.next()) {
            const Outcome outcome = sim.handle_frame(session, *frame);
            for (const auto &segment : outcome.segments) {
                ::sendto(udpFd, segment.data(), segment.size(), 0,
                         reinterpret_cast<const sockaddr *>(&d.from), sizeof d.from);
            }
        }
    }

    void on_at() {
        Datagram d;
        if (!receive(atFd, d)) return;
        const std::string line(d.bytes.begin(), d.bytes.end());
        const auto answer = sim.handle_at(endpoint_text(d.from), line);
        if (answer) {
            ::sendto(atFd, answer->data(), answer->size(), 0,
                     reinterpret_cast<const sockaddr *>(&d.from), sizeof d.from);
        }
    }

    uint32_t line_speed() const {
        termios tio{};
        if (::tcgetattr(ptySlave, &tio) != 0) return 0;
        switch (::cfgetospeed(&tio)) {
        case B9600:
            return 9600;
        case B19200:
            return 19200;
        case B38400:
            return 38400;
        case B57600:
            return 57600;
        case B115200:
            return 115200;
        default:
            return 0;
        }
    }

    void on_serial() {
        std::vector<uint8_t> buf(kReadChunk);
        const ssize_t n = ::read(ptyMaster, buf.data(), buf.size());
        if (n <= 0) return;
        serialSession.lineSpeed = line_speed();
        const uint32_t wanted = sim.m_config.serialSpeed;
        if (wanted != 0 && serialSession.lineSpeed != wanted) {
            return; // at the wrong speed the bytes are noise to the controller
        }
        serialSplitter.feed(buf.data(), static_cast<std::size_t>(n));
        while (auto frame = serialSplitter.next()) {
            send_outcome(ptyMaster, sim.handle_frame(serialSession, *frame));
        }
    }

    void run() {
        for (;;) {
            std::vector<pollfd> fds = {{wake[0], POLLIN, 0}};
            for (const int fd : {listenFd, udpFd, atFd, ptyMaster}) {
                if (fd >= 0) fds.push_back({fd, POLLIN, 0});
            }
            const std::size_t fixed = fds.size();
            for (const auto &c : connections)
                fds.push_back({c->fd, POLLIN, 0});
            if (::poll(fds.data(), fds.size(), -1) < 0) {
                if (errno == EINTR) continue;
                return;
            }
            if (fds[0].revents != 0) return;
            for (std::size_t i = 1; i < fixed; ++i) {
                if ((fds[i].revents & POLLIN) == 0) continue;
                const int fd = fds[i].fd;
                if (fd == listenFd)
                    on_accept();
                else if (fd == udpFd)
                    on_udp();
                else if (fd == atFd)
                    on_at();
                else if (fd == ptyMaster)
                    on_serial();
            }
            // Connections accepted in this round are not in fds yet and wait for the next.
            std::vector<int> closing;
            for (std::size_t i = fixed; i < fds.size(); ++i) {
                if (fds[i].revents == 0) continue;
                auto it = std::find_if(connections.begin(), connections.end(),
                                       [&](const auto &c) { return c->fd == fds[i].fd; });
                if (it != connections.end() && !on_connection(**it)) closing.push_back(fds[i].fd);
            }
            for (const int fd : closing) {
                ::close(fd);
                std::erase_if(connections, [&](const auto &c) { return c->fd == fd; });
            }
        }
    }
};

Simulator::Simulator(Config config) : m_config(std::move(config)) {
    register_network_handlers(*this);
    register_control_handlers(*this);
    register_files_handlers(*this);
    register_dynamic_handlers(*this);
}

Simulator::~Simulator() {
    stop();
}

void Simulator::start() {
    if (m_impl) return;
    auto impl = std::make_unique<Impl>(*this);
    if (::pipe2(impl->wake, O_CLOEXEC) != 0) fail("pipe");
    if (m_config.tcpPort >= 0) {
        impl->open_tcp(m_config.bindAddress, m_config.tcpPort);
        m_tcpPort = bound_port(impl->listenFd);
    }
    if (m_config.udpPort >= 0) {
        impl->udpFd = open_udp(m_config.udpPort);
        m_udpPort = bound_port(impl->udpFd);
    }
    if (m_config.atPort >= 0) {
        impl->atFd = open_udp(m_config.atPort);
        m_atPort = bound_port(impl->atFd);
    }
    if (m_config.serial) impl->open_pty();
    Impl *raw = impl.get();
    impl->thread = std::thread([raw] { raw->run(); });
    m_impl = std::move(impl);
}

void Simulator::stop() {
    if (!m_impl) return;
    const char byte = 0;
    if (::write(m_impl->wake[1], &byte, 1) < 0) {
        // The pipe cannot be full with one byte in it; nothing else to do.
    }
    if (m_impl->thread.joinable()) m_impl->thread.join();
    m_impl.reset();
}

void Simulator::on(uint8_t group, uint8_t code, Handler handler) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_handlers[{group, code}] = std::move(handler);
}

void Simulator::on_at(AtHandler handler) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_atHandler = std::move(handler);
}

std::vector<Request> Simulator::requests() const {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    return m_requests;
}

std::vector<Request> Simulator::commands() const {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    std::vector<Request> out;
    for (const auto &r : m_requests) {
        if (!r.is_probe()) out.push_back(r);
    }
    return out;
}

std::vector<std::string> Simulator::at_lines() const {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    return m_atLines;
}

void Simulator::clear_requests() {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_requests.clear();
    m_requestsArrived = 0;
    m_atLines.clear();
}

bool Simulator::wait_for_requests(std::size_t count, int timeoutMs) const {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(timeoutMs);
    for (;;) {
        {
            std::lock_guard<std::recursive_mutex> guard(m_mutex);
            if (m_requestsArrived >= count) return true;
        }
        if (std::chrono::steady_clock::now() >= deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

Faults Simulator::faults() const {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    return m_config.faults;
}

void Simulator::set_faults(const Faults &faults) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_config.faults = faults;
}

uint16_t Simulator::controller_type() const {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    return m_config.controllerType;
}

void Simulator::set_controller_type(uint16_t type) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_config.controllerType = type;
}

void Simulator::set_file_written_hook(FileWrittenHook hook) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_fileHook = std::move(hook);
}

void Simulator::notify_file_written(uint8_t space, const std::string &name,
                                    const std::vector<uint8_t> &content) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    if (m_fileHook) m_fileHook(space, name, content);
}

void Simulator::set_request_hook(RequestHook hook) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_requestHook = std::move(hook);
}

void Simulator::set_trace(std::ostream *out) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_trace = out;
}

void Simulator::trace_request(const Request &request) const {
    if (m_trace != nullptr) {
        *m_trace << describe_request(request) << std::endl;
    }
}

Reply Simulator::dispatch(const Request &request) {
    const auto it = m_handlers.find({request.group, request.code});
    if (it == m_handlers.end()) {
        return Reply::ack(); // a command nobody models is simply acknowledged
    }
    return it->second(*this, request);
}

std::vector<uint8_t> Simulator::build_reply_frame(const Request &request, const Reply &reply,
                                                  const Faults &faults, bool faulty) const {
    AnswerLayout layout;
    layout.version = answer_version_for(m_config.controllerType);
    layout.deviceType = m_config.controllerType;
    layout.echo = m_config.echoByte;
    layout.capability = m_config.capability;
    layout.sequence = request.sequence;
    if (reply.kind == Reply::Kind::Data) {
        layout.group = request.group;
        layout.code = static_cast<uint8_t>(request.code + 0x80);
        layout.errorCode = reply.errorCode;
        layout.data = reply.data;
    } else {
        layout.group = kGroupAck;
        layout.code = reply.errorCode == 0 ? 0 : 1;
        layout.errorCode = reply.errorCode;
    }
    if (faulty) {
        layout.padIndex = faults.padIndex;
        layout.headerVersion = faults.headerVersion;
        layout.badHeaderCheck = faults.badHeaderCheck;
        layout.badCrc = faults.badCrc;
    }
    return answer_frame(layout);
}

Simulator::Outcome Simulator::handle_frame(Session &session, const std::vector<uint8_t> &frame) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    Request request;
    request.transport = session.transport;
    request.peer = session.peer;
    request.local = session.local;
    request.lineSpeed = session.lineSpeed;
    request.frame = frame;
    request.inner = unescape(frame);
    const ParsedRequest parsed = parse_request(request.inner);
    request.version = parsed.version;
    request.screen = parsed.screen;
    request.deviceType = parsed.deviceType;
    request.sequence = parsed.sequence;
    request.echo = parsed.echo;
    request.group = parsed.group;
    request.code = parsed.code;
    request.data = parsed.data;
    request.valid = parsed.valid;
    m_requests.push_back(request);
    ++m_requestsArrived;
    keep_last(m_requests, m_config.keepRequests);
    trace_request(request);
    if (m_requestHook) m_requestHook(request);

    Outcome outcome;
    if (!request.valid) {
        return outcome; // a controller drops what it cannot read
    }
    const Faults faults = m_config.faults;
    const bool faulty = faults.scope == FaultScope::All ||
                        (faults.scope == FaultScope::Probe) == request.is_probe();
    if (faulty && faults.silent) {
        return outcome;
    }

    Reply reply;
    if (request.is_probe()) {
        reply = Reply::answer({});
    } else if (faulty && faults.errorCode != 0) {
        reply = Reply::error(faults.errorCode);
    } else {
        const bool block = request.group == kGroupFiles &&
                           (request.code == kCodeFileBlock || request.code == kCodeConfBlock);
        if (block && faults.closeAfterBlocks >= 0 &&
            session.fileBlocks >= static_cast<uint32_t>(faults.closeAfterBlocks)) {
            outcome.close = true; // enough blocks: drop the line without answering
            return outcome;
        }
        if (block) ++session.fileBlocks;
        reply = dispatch(request);
    }
    if (reply.kind == Reply::Kind::None) {
        outcome.close = reply.closeAfter;
        return outcome;
    }
    std::vector<uint8_t> answer = build_reply_frame(request, reply, faults, faulty);
    if (faulty && faults.splitAnswer && answer.size() > 1 && session.transport != Transport::Udp) {
        const auto half = static_cast<std::ptrdiff_t>(answer.size() / 2);
        outcome.segments.emplace_back(answer.begin(), answer.begin() + half);
        outcome.segments.emplace_back(answer.begin() + half, answer.end());
    } else {
        outcome.segments.push_back(std::move(answer));
    }
    outcome.close = reply.closeAfter;
    return outcome;
}

std::optional<std::string> Simulator::handle_at(const std::string &peer, const std::string &line) {
    std::lock_guard<std::recursive_mutex> guard(m_mutex);
    m_atLines.push_back(line);
    keep_last(m_atLines, m_config.keepRequests);
    if (m_trace != nullptr) {
        *m_trace << "at " << peer << ": " << line << std::endl;
    }
    const Faults faults = m_config.faults;
    if (faults.silent && faults.scope == FaultScope::All) {
        return std::nullopt;
    }
    return m_atHandler ? m_atHandler(*this, line) : std::nullopt;
}

} // namespace zel::sim
