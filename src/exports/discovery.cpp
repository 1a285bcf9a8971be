// Exported entries of discovery and network configuration.
#include "zel_sdk_dual.h"

#include "commands/discovery.h"
#include "sdk/guard.h"

using namespace zel;

namespace {

uint8_t *record_bytes(ZelPingRecord *record) {
    return reinterpret_cast<uint8_t *>(record);
}

} // namespace

extern "C" {

ZEL_API int32_t zelDual_cmd_searchController(ZelPingRecord *pingRecord) {
    return guarded(-1, [&] { return search_controller(record_bytes(pingRecord)); });
}

ZEL_API int32_t zelDual_cmd_tcpPing(const char *pIP, uint16_t nPort, ZelPingRecord *pingRecord) {
    return guarded(-1, [&] { return tcp_ping(pIP, nPort, record_bytes(pingRecord)); });
}

ZEL_API int32_t zelDual_cmd_udpPing(ZelPingRecord *pingRecord) {
    return guarded(-1, [&] { return udp_ping(record_bytes(pingRecord)); });
}

ZEL_API int32_t zelDual_cmd_uart_searchController(ZelPingRecord *pingRecord,
                                                  const char *pSerialName) {
    return guarded(-1,
                   [&] { return uart_search_controller(record_bytes(pingRecord), pSerialName); });
}

ZEL_API int32_t zelDual_cmd_udpNetworkSearch(uint8_t *pOut) {
    return guarded(-1, [&] { return udp_network_search(pOut, kNetSearchLen); });
}

ZEL_API int32_t zelDual_cmd_udpNetworkSearch_6G(uint8_t *pOut) {
    return guarded(-1, [&] { return udp_network_search_6g(pOut, kNetSearch6GLen); });
}

ZEL_API int32_t zelDual_cmd_udpNetworkSearch_6G_Web(uint8_t *pOut) {
    return guarded(-1, [&] { return udp_network_search_6g(pOut, kNetSearch6GWebLen); });
}

ZEL_API int32_t zelDual_cmd_tcpNetworkSearch_6G(const char *pIP, uint16_t nPort, uint8_t *pOut) {
    return guarded(-1, [&] { return tcp_network_search_6g(pIP, nPort, pOut, kNetSearch6GLen); });
}

ZEL_API int32_t zelDual_cmd_tcpNetworkSearch_6G_Web(const char *pIP, uint16_t nPort,
                                                    uint8_t *pOut) {
    return guarded(-1, [&] { return tcp_network_search_6g(pIP, nPort, pOut, kNetSearch6GWebLen); });
}

ZEL_API int32_t zelDual_cmd_uart_search_Net_6G(uint8_t *pOut, const char *pSerialName,
                                               uint8_t nBaundIndex) {
    return guarded(-1, [&] {
        return uart_network_search_6g(pOut, kNetSearch6GLen, pSerialName, nBaundIndex);
    });
}

ZEL_API int32_t zelDual_cmd_uart_search_Net_6G_Web(uint8_t *pOut, const char *pSerialName,
                                                   uint8_t nBaundIndex) {
    return guarded(-1, [&] {
        return uart_network_search_6g(pOut, kNetSearch6GWebLen, pSerialName, nBaundIndex);
    });
}

ZEL_API int32_t zelDual_cmd_udpSetIP(uint8_t mode, const char *pIP1, const char *pIP2,
                                     const char *pIP3, uint16_t nPort, uint8_t type,
                                     const char *pIP4, uint16_t nPort2, const uint8_t *pValue8,
                                     uint16_t value16, const uint8_t *pBytes12) {
    return guarded(-1, [&] {
        SetIpArgs args;
        args.mode = mode;
        args.address1 = pIP1;
        args.address2 = pIP2;
        args.address3 = pIP3;
        args.port = nPort;
        args.type = type;
        args.address4 = pIP4;
        args.port2 = nPort2;
        args.value8 = pValue8;
        args.value16 = value16;
        args.bytes12 = pBytes12;
        return udp_set_ip(args);
    });
}

ZEL_API int32_t zelDual_cmd_udpSetMac(const char *pMac) {
    return guarded(-1, [&] { return udp_set_mac(pMac); });
}

ZEL_API int32_t zelDual_cmd_AT_setWifiSsidPwd(const char *pSsid, const char *pPwd) {
    return guarded(-1, [&] { return at_set_wifi(pSsid, pPwd); });
}

ZEL_API int32_t zelDual_cmd_AT_getWifiSsidPwd(char *pSsid, char *pPwd) {
    return guarded(-1, [&] { return at_get_wifi(pSsid, pPwd); });
}

} // extern "C"
