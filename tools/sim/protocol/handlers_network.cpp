// Handlers of the ping (0xA2 0x00), the network configuration (group 0xA4) and the Wi-Fi
// module's AT commands.
#include "sim/protocol/handlers_network.h"

#include <algorithm>

#include "sim/protocol/simulator.h"

namespace zel::sim {
namespace {

constexpr std::size_t kPingAddressLen = 20;
constexpr std::size_t kNetRecordLen = 64;
constexpr std::size_t kSetIpLen = 51;
// The module's answer to "AT+INQUIRY" is at least this long, or the host reads nothing.
constexpr std::size_t kInquiryMinLen = 38;

Reply ping(Simulator &sim, const Request &request) {
    auto &state = sim.module_state<NetworkState>();
    if (state.pingOverride) {
        return Reply::answer(*state.pingOverride);
    }
    const uint16_t type = sim.controller_type();
    std::vector<uint8_t> data = {static_cast<uint8_t>(type), static_cast<uint8_t>(type >> 8)};
    std::vector<uint8_t> tail = state.pingTail;
    tail.resize(30, 0);
    data.insert(data.end(), tail.begin(), tail.end());
    std::vector<uint8_t> address(kPingAddressLen, 0);
    std::copy_n(request.local.begin(), std::min(request.local.size(), kPingAddressLen - 1),
                address.begin());
    data.insert(data.end(), address.begin(), address.end());
    return Reply::answer(std::move(data));
}

Reply set_mac(Simulator &sim, const Request &request) {
    if (request.data.size() != 6) return Reply::error(1);
    auto &state = sim.module_state<NetworkState>();
    std::copy_n(request.data.begin(), 6, state.mac.begin());
    return Reply::ack();
}

Reply set_ip(Simulator &sim, const Request &request) {
    if (request.data.size() != kSetIpLen) return Reply::error(1);
    auto &state = sim.module_state<NetworkState>();
    state.lastSetIp = request.data;
    std::copy_n(request.data.begin() + 1, 4, state.ip.begin());
    std::copy_n(request.data.begin() + 5, 4, state.mask.begin());
    std::copy_n(request.data.begin() + 9, 4, state.gateway.begin());
    state.port = static_cast<uint16_t>(request.data[13] | (request.data[14] << 8));
    return Reply::ack();
}

Reply net_search(Simulator &sim, const Request &) {
    return Reply::answer(network_record(sim.module_state<NetworkState>(), kNetRecordLen));
}

Reply net_search_6g(Simulator &sim, const Request &) {
    const auto &state = sim.module_state<NetworkState>();
    return Reply::answer(network_record(state, state.netSearch6GLen));
}

bool starts_with(const std::string &text, const std::string &prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

std::optional<std::string> at_line(Simulator &sim, const std::string &line) {
    auto &state = sim.module_state<NetworkState>();
    if (line == "AT") return std::string("+ok");
    if (starts_with(line, "AT+AP=")) {
        // name,auth,password,channel
        const std::string args = line.substr(6);
        const std::size_t first = args.find(',');
        const std::size_t second = first == std::string::npos ? first : args.find(',', first + 1);
        const std::size_t third = second == std::string::npos ? second : args.find(',', second + 1);
        if (third == std::string::npos) return std::string("+ERR=-4");
        state.ssid = args.substr(0, first);
        state.password = args.substr(second + 1, third - second - 1);
        return std::string("+ok");
    }
    if (starts_with(line, "AT+AP_IP=")) {
        state.apAddress = line.substr(9);
        return std::string("+ok");
    }
    if (starts_with(line, "AT+SOCKET=") || starts_with(line, "AT+WMODE=")) {
        return std::string("+ok");
    }
    if (line == "AT+RST") {
        ++state.restarts;
        return std::string("+ok");
    }
    if (line == "AT+INQUIRY") {
        std::string answer =
            state.ssid + "," + state.password + ",4,11," + state.apAddress + ",TCPS,5005";
        if (answer.size() < kInquiryMinLen) answer.append(kInquiryMinLen - answer.size(), ' ');
        return answer + "\r\n";
    }
    return std::string("+ERR=-1");
}

} // namespace

std::vector<uint8_t> network_record(const NetworkState &state, std::size_t length) {
    std::vector<uint8_t> out;
    out.insert(out.end(), state.mac.begin(), state.mac.end());
    out.insert(out.end(), state.ip.begin(), state.ip.end());
    out.insert(out.end(), state.mask.begin(), state.mask.end());
    out.insert(out.end(), state.gateway.begin(), state.gateway.end());
    out.push_back(static_cast<uint8_t>(state.port));
    out.push_back(static_cast<uint8_t>(state.port >> 8));
    out.resize(length, 0);
    return out;
}

void register_network_handlers(Simulator &sim) {
    sim.on(0xA2, 0x00, ping);
    sim.on(0xA4, 0x00, set_mac);
    sim.on(0xA4, 0x01, set_ip);
    sim.on(0xA4, 0x02, net_search);
    sim.on(0xA4, 0x03, net_search_6g);
    sim.on_at(at_line);
}

} // namespace zel::sim
