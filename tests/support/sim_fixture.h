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

// A loopback port where nothing listens: bound once to learn a free number, then closed.
inline uint16_t closed_port() {
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in sa{};
    sa.sin_family = AF_INET;
    sa.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(fd, reinterpret_cast<sockaddr *>(&sa), sizeof sa);
    socklen_t len = sizeof sa;
    ::getsockname(fd, reinterpret_cast<sockaddr *>(&sa), &len);
    ::close(fd);
    return ntohs(sa.sin_port);
}


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
