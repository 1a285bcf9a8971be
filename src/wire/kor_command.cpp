#include "wire/kor_command.h"

namespace zel {

KOR_command::~KOR_command() = default;

int32_t KOR_command::send(const uint8_t *, uint32_t) {
    return -1;
}
int32_t KOR_command::recv(uint8_t *, uint32_t &, uint32_t) {
    return -1;
}

int32_t KOR_command::send_recv_cmd(uint8_t, uint8_t, const uint8_t *, uint16_t, uint8_t *,
                                   uint16_t &) {
    return -1;
}
int32_t KOR_command::send_cmd(uint8_t, uint8_t, const uint8_t *, uint16_t) {
    return -1;
}
int32_t KOR_command::send_recv_cmd_1K(uint8_t, uint8_t, const uint8_t *, uint16_t, uint8_t *,
                                      uint16_t &) {
    return -1;
}
int32_t KOR_command::send_recv_cmd_1K_large(uint8_t, uint8_t, const uint8_t *, uint32_t, uint8_t *,
                                            uint16_t &) {
    return -1;
}

} // namespace zel
