// State of the simulated controller's network identity and of its Wi-Fi module, as the
// network handlers keep it (Simulator::module_state<NetworkState>()).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zel::sim {

struct NetworkState {
    // The 30 bytes behind the controller type in a ping answer; the address text follows.
    std::vector<uint8_t> pingTail = std::vector<uint8_t>(30, 0);
    // When set, the whole ping answer's data, as it stands (to test odd lengths).
    std::optional<std::vector<uint8_t>> pingOverride;
    // Length of the G6 network record (0xA4 0x03): 206, or 595 for the web form.
    uint16_t netSearch6GLen = 206;

    std::array<uint8_t, 6> mac = {0x00, 0x5A, 0x45, 0x4C, 0x00, 0x01};
    std::array<uint8_t, 4> ip = {192, 168, 1, 100};
    std::array<uint8_t, 4> mask = {255, 255, 255, 0};
    std::array<uint8_t, 4> gateway = {192, 168, 1, 1};
    uint16_t port = 5005;
    std::vector<uint8_t> lastSetIp; // the 51 bytes of the last set-IP command

    // The Wi-Fi module.
    std::string ssid = "zel-sim";
    std::string password = "12345678";
    std::string apAddress = "192.168.100.1";
    int restarts = 0;
};

// The network record of the simulator's own layout: MAC, address, mask, gateway (4 bytes
// each), port (u16), zero-filled to `length`.
std::vector<uint8_t> network_record(const NetworkState &state, std::size_t length);

} // namespace zel::sim
