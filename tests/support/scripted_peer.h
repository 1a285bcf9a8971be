// A transport for exchange tests: it keeps every send and hands out prepared answers, so a test
// sees exactly which pieces an exchange sent, with which room and time-out it waited, and how
// it took an answer apart, without a socket or a simulator.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <vector>

#include "wire/kor_command.h"

namespace zel::test {

class ScriptedPeer : public KOR_command {
  public:
    ScriptedPeer() { m_DeviceType = 0x0051; }

    int32_t send(const uint8_t *data, uint32_t len) override {
        if (failSendAt == static_cast<int>(sends.size())) return -1;
        // A length beyond the frame buffer is refused, as every transport refuses it.
        if (len > kFrameBufferLen) {
            refused.push_back(len);
            return -1;
        }
        sends.emplace_back(data, data + len);
        return 0;
    }
    // Hands out the next answer whole; with none left it fails as a silent peer does.
    int32_t recv(uint8_t *buf, uint32_t &len, uint32_t timeout) override {
        timeouts.push_back(timeout);
        rooms.push_back(len);
        if (answers.empty()) return -1;
        const std::vector<uint8_t> a = answers.front();
        answers.pop_front();
        std::copy(a.begin(), a.end(), buf);
        len = static_cast<uint32_t>(a.size());
        return 0;
    }

    std::vector<std::size_t> send_sizes() const {
        std::vector<std::size_t> out;
        for (const auto &s : sends)
            out.push_back(s.size());
        return out;
    }
    std::vector<uint8_t> sent_bytes() const {
        std::vector<uint8_t> out;
        for (const auto &s : sends)
            out.insert(out.end(), s.begin(), s.end());
        return out;
    }

    std::vector<std::vector<uint8_t>> sends;  // every send, as it was handed over
    std::deque<std::vector<uint8_t>> answers; // what the next recv calls return, in order
    std::vector<uint32_t> timeouts;           // the time-out of every recv
    std::vector<uint32_t> rooms;              // the room every recv offered
    int failSendAt = -1;                      // the send (0-based) that fails; -1 none
    std::vector<uint32_t> refused;            // lengths of sends refused as too long
};

} // namespace zel::test
