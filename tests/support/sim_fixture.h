// The controller simulator embedded in a test: TCP on a free loopback port, and a serial line
// on a pseudo-terminal when asked for. Broadcast ways stay off here (they only run inside the
// namespaces of netns.h).
#pragma once

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <memory>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "sim/protocol/simulator.h"

namespace zel::test {

// A loopback port where nothing listens: a socket bound to it that never listens, so that a
// connection is refused, and no other process can take the number while the object lives.
class ClosedPort {
  public:
    ClosedPort() : m_fd(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in sa{};
        sa.sin_family = AF_INET;
        sa.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t len = sizeof sa;
        if (::bind(m_fd, reinterpret_cast<sockaddr *>(&sa), sizeof sa) == 0 &&
            ::getsockname(m_fd, reinterpret_cast<sockaddr *>(&sa), &len) == 0)
            m_port = ntohs(sa.sin_port);
        EXPECT_NE(m_port, 0) << "no loopback port to hold";
    }
    ~ClosedPort() { ::close(m_fd); }
    ClosedPort(const ClosedPort &) = delete;
    ClosedPort &operator=(const ClosedPort &) = delete;

    uint16_t port() const { return m_port; }

  private:
    int m_fd;
    uint16_t m_port = 0;
};

inline sim::Config loopback_config(uint16_t controllerType = 0x0051, bool serial = false) {
    sim::Config config;
    config.controllerType = controllerType;
    config.bindAddress = "127.0.0.1";
    config.tcpPort = 0;
    config.udpPort = -1;
    config.atPort = -1;
    config.serial = serial;
    return config;
}

class SimTest : public ::testing::Test {
  protected:
    // Starts a simulator with `config` (replacing any earlier one).
    sim::Simulator &start_sim(sim::Config config) {
        m_sim.reset();
        m_sim = std::make_unique<sim::Simulator>(std::move(config));
        m_sim->start();
        return *m_sim;
    }
    sim::Simulator &start_sim(uint16_t controllerType = 0x0051, bool serial = false) {
        return start_sim(loopback_config(controllerType, serial));
    }
    sim::Simulator &sim() { return *m_sim; }
    uint16_t port() const { return m_sim->tcp_port(); }

  private:
    std::unique_ptr<sim::Simulator> m_sim;
};

} // namespace zel::test
