// State of the simulated controller's device-control module: what the host set last, and the
// records the controller answers with. Handlers hold the simulator's lock; another thread takes
// Simulator::lock() before it reads or changes this.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include "sim/protocol/simulator.h"

namespace zel::sim {

// Error codes of device control in an acknowledge of code 1; the simulator's own.
namespace control_error {
inline constexpr uint16_t kBadLength = 0x38;   // command data of the wrong length
inline constexpr uint16_t kNotBcd = 0x3A;      // a BCD field with a nibble above 9
inline constexpr uint16_t kBadPassword = 0x3C; // the old password does not match
} // namespace control_error

struct ControlState {
    // Answers.
    std::vector<uint8_t> controllerId = {0x01, 0x5A, 0xA5, 0x5B, 0xA6, 0x06, 0x07, 0x08};
    std::vector<uint8_t> status = default_status();
    // Battle time: the year word in BCD, then BCD month, day, hour, minute, second.
    std::vector<uint8_t> battleTime = {0x26, 0x20, 0x12, 0x31, 0x23, 0x59, 0x58, 0x00, 0x00, 0x00,
                                       0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
    std::vector<uint8_t> stopwatch = {0x00, 0x01, 0x30, 0x25};
    std::vector<uint8_t> sensorBrightness = {0x40, 0x00};

    // What the host set.
    int resets = 0;
    std::optional<std::array<uint8_t, 8>> clock; // the last time stamp, as sent (BCD)
    std::array<uint8_t, 6> password{};           // six zero bytes: none set
    std::optional<std::array<uint8_t, 4>> firmwareActivated;
    // The data of the last accepted command of every other setting code.
    std::map<uint8_t, std::vector<uint8_t>> settings;

    static std::vector<uint8_t> default_status();
};

// The module's state inside a simulator.
ControlState &control_state(Simulator &sim);

} // namespace zel::sim
