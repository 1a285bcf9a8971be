#include "wire/kor_command.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "sdk/bytes.h"
#include "sdk/console.h"

namespace zel {
namespace {

// Frame lengths travel as signed 16-bit values: a frame of 32768 bytes or more turns into a
// length the transports refuse (see the peers' send). One of 65536 bytes or more, which only
// escaping can make, is refused the same way rather than wrapping to a piece of the frame.
uint32_t widened_frame_length(std::size_t length) {
    if (length > 0xFFFF) {
        return UINT32_MAX;
    }
    return static_cast<uint32_t>(static_cast<int32_t>(static_cast<int16_t>(length)));
}

} // namespace

KOR_command::~KOR_command() = default;

int32_t KOR_command::send(const uint8_t *, uint32_t) {
    return -1;
}

int32_t KOR_command::recv(uint8_t *, uint32_t &, uint32_t) {
    return -1;
}

int32_t KOR_command::probe_device_type(uint32_t timeout) {
    std::vector<uint8_t> frame;
    pack_probe(frame);
    int32_t result = send(frame.data(), static_cast<uint32_t>(frame.size()));
    if (result != 0) {
        return result;
    }
    std::vector<uint8_t> answer(kFrameBufferLen, 0);
    uint32_t length = kFrameBufferLen;
    result = recv(answer.data(), length, timeout);
    if (result != 0) {
        return result;
    }
    std::vector<uint8_t> unescaped;
    uint16_t unescapedLen = 0;
    result = unpack_probe(answer.data(), static_cast<uint16_t>(length), unescaped, unescapedLen);
    if (result != 0) {
        return result;
    }
    m_DeviceType = read_u16_le(unescaped, 6);
    return 0;
}

int32_t KOR_command::send_recv_cmd(uint8_t group, uint8_t code, const uint8_t *data,
                                   uint16_t dataLen, uint8_t *answer, uint16_t &capacity) {
    // The body's length would be negative and its data left out: such a frame never goes out.
    if (dataLen > kLargestCommandData) {
        return -1;
    }
    std::vector<uint8_t> frame;
    pack(group, code, data, static_cast<int16_t>(dataLen), frame);
    int32_t result = send(frame.data(), widened_frame_length(frame.size()));
    if (result != 0) {
        return result;
    }
    // The answer lands in the same 65536 bytes: one recv, no reassembly.
    frame.assign(kFrameBufferLen, 0);
    uint32_t length = kFrameBufferLen;
    result = recv(frame.data(), length, kAnswerTimeout);
    if (result != 0) {
        return result;
    }
    return unpack(frame.data(), static_cast<uint16_t>(length), group, code, answer, capacity);
}

int32_t KOR_command::send_cmd(uint8_t group, uint8_t code, const uint8_t *data, uint16_t dataLen) {
    uint8_t answer[kPlainAnswerCapacity] = {};
    uint16_t capacity = kPlainAnswerCapacity;
    return send_recv_cmd(group, code, data, dataLen, answer, capacity);
}

int32_t KOR_command::send_recv_cmd_1K(uint8_t group, uint8_t code, const uint8_t *data,
                                      uint16_t dataLen, uint8_t *answer, uint16_t &capacity) {
    std::vector<uint8_t> frame;
    pack240(group, code, data, dataLen, frame);
    uint8_t reply[kDynamicChunkLen] = {};

    // A frame of 32768 bytes or more has a negative total: nothing goes out and the exchange
    // still waits for an answer, as the controllers' tools always have. One of 65536 bytes or
    // more, which escaping can make, counts as negative too rather than wrapping to a piece.
    const int16_t total = frame.size() > 0xFFFF ? int16_t{-1} : static_cast<int16_t>(frame.size());
    uint16_t sent = 0;
    int32_t result = 0;
    while (sent < total) {
        const int chunk = total < static_cast<int>(kDynamicChunkLen)
                              ? total
                              : std::min(static_cast<int>(kDynamicChunkLen), total - sent);
        result = send(frame.data() + sent, static_cast<uint32_t>(chunk));
        if (result != 0) {
            break;
        }
        sent = static_cast<uint16_t>(sent + chunk);
    }
    if (result != 0) {
        console_printf("Send failed!!!!!!!!!!!!!!!!!!!!!!!!!!!!!! have sent bytes = nTotalLen = %d "
                       "!\n",
                       sent);
        return result;
    }
    uint32_t length = kDynamicChunkLen;
    result = recv(reply, length, kAnswerTimeout);
    if (result != 0) {
        console_printf("Recv failed. nTotalLen ======= %d \n", sent);
        return result;
    }
    result = unpack(reply, static_cast<uint16_t>(length), group, code, answer, capacity);
    if (result != 0) {
        console_printf("Unpack failed. nTotalLen ======= %d \n", sent);
    }
    return result;
}

int32_t KOR_command::send_recv_cmd_1K_large(uint8_t group, uint8_t code, const uint8_t *data,
                                            uint32_t dataLen, uint8_t *answer, uint16_t &capacity) {
    const std::vector<uint8_t> frame = pack_240_large(group, code, data, dataLen);
    uint8_t reply[kDynamicChunkLen] = {};
    const std::size_t whole = frame.size() / kDynamicChunkLen;
    const std::size_t rest = frame.size() % kDynamicChunkLen;
    for (std::size_t i = 0; i < whole; ++i) {
        std::fill(std::begin(reply), std::end(reply), 0);
        if (send(frame.data() + i * kDynamicChunkLen, kDynamicChunkLen) != 0) {
            console_printf("Send failed!!!!!!!!!!!!!!!!!!!!!!!!!!!!!! have sent bytes = %d !\n",
                           static_cast<int>(i * kDynamicChunkLen));
            return -1;
        }
    }
    if (rest >= 1) {
        std::fill(std::begin(reply), std::end(reply), 0);
        if (send(frame.data() + whole * kDynamicChunkLen, static_cast<uint32_t>(rest)) != 0) {
            console_printf("Send failed, at nRemainder !!!!!!!!!!!!!!!!!!!!!!!!!!!!! will sent "
                           "bytes = %d !\n",
                           static_cast<int>(rest));
            return -1;
        }
    }
    uint32_t length = kDynamicChunkLen;
    int32_t result = recv(reply, length, kAnswerTimeout);
    if (result != 0) {
        console_printf("Recv failed. nTotalLen ======= %d \n", 0);
        return result;
    }
    result = unpack(reply, static_cast<uint16_t>(length), group, code, answer, capacity);
    if (result != 0) {
        console_printf("Unpack failed. nTotalLen ======= %d \n", 0);
    }
    return result;
}

} // namespace zel
