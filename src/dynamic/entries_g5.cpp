#include "dynamic/entries_g5.h"

#include "program/screen_settings.h"
#include "sdk/console.h"
#include "sdk/globals.h"
#include "sdk/log.h"

namespace zel::dynamic {
namespace {

const char *catch_line(AddFormG5 form) {
    switch (form) {
    case AddFormG5::Text:
        return "catch(...) at UpdateOrAdd_AreaWithTxt!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!\r\n";
    case AddFormG5::Picture:
        return "catch(...) at UpdateOrAdd_AreaWithPic!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!\r\n";
    case AddFormG5::Items:
        break;
    }
    return "catch(...) at dynamicArea_AddAreaInfos_5G !!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!!\r\n";
}

// The body of an add; `result` holds what an exception leaves for a text add.
int32_t add_body(const Target &target, AddFormG5 form, E_ScreenColor_G56 color,
                 const AddHeadG5 &head, std::span<const ContentG5> contents, int32_t &result) {
    OpenPeer line;
    uint16_t controllerType = 0;
    if (target.serial) {
        line = open_peer(target);
        if (line.initResult != 0) {
            const char *format =
                form == AddFormG5::Picture
                    ? "oSerialClient.init error! pSerialName=%s, nBaundIndex=%d, err=%d"
                    : "oSerialClient.init error! pSerialName=%s, nSpeedIndex=%d, err=%d";
            log_locked(kLogError, format, target.portName.c_str(), target.speedIndex,
                       line.initResult);
            return -1;
        }
        controllerType = line.peer->m_DeviceType;
    } else {
        const int32_t ping = ping_controller_type(target, controllerType);
        if (ping != 0) {
            console_printf("cmd_tcpPing run error...");
            return ping;
        }
        if (form == AddFormG5::Picture) {
            console_printf("retdata.ControllerType == 0x%x \n", controllerType);
            console_printf("ret =====cmd_tcpPing===== %d \n", ping);
        }
    }
    setScreenParams_G56(color, controllerType, static_cast<uint32_t>(g_dualPixel.load()));

    std::vector<RenderedPages> rendered;
    for (const ContentG5 &content : contents) {
        DynamicAreaLockGuard lock; // held for rendering, never during traffic
        rendered.push_back(render_g5(head.rect, content));
    }
    const std::vector<uint8_t> command = build_add_g5(head, rendered);
    if (command.empty()) return -1;

    if (!target.serial) {
        line = open_peer(target); // its init result shows in the exchange
        console_printf("TK_Client init后，Client.m_DeviceType == 0x%x \n", line.peer->m_DeviceType);
        if (line.peer->m_DeviceType != controllerType) {
            console_printf("oClient.m_DeviceType != retdata.ControllerType \n");
        }
        line.peer->m_DeviceType = controllerType;
    }
    result = exchange(*line.peer, command);
    return narrow16(result);
}

// The peer kind of the delete commands reads 2 while a serial delete runs, as hosts that
// watch it expect; the transport itself follows the target, so that a TCP delete on another
// thread meanwhile still goes over TCP.
class SerialDeleteMark {
  public:
    explicit SerialDeleteMark(bool serial) : m_serial(serial) {
        if (m_serial) g_deletePeerKind = kDeletePeerSerial;
    }
    ~SerialDeleteMark() {
        if (m_serial) g_deletePeerKind = kDeletePeerTcp;
    }
    SerialDeleteMark(const SerialDeleteMark &) = delete;
    SerialDeleteMark &operator=(const SerialDeleteMark &) = delete;

  private:
    bool m_serial;
};

int32_t send_delete(const Target &target, const std::vector<uint8_t> &command) {
    SerialDeleteMark mark(target.serial);
    OpenPeer line = open_peer(target); // the init result shows in the exchange
    return narrow16(exchange(*line.peer, command));
}

} // namespace

int32_t add_area_g5(const Target &target, AddFormG5 form, E_ScreenColor_G56 color,
                    const AddHeadG5 &head, std::span<const ContentG5> contents) {
    int32_t result = 0;
    try {
        return add_body(target, form, color, head, contents, result);
    } catch (...) {
        console_printf("%s", catch_line(form));
        return form == AddFormG5::Text ? narrow16(result) : -1;
    }
}

int32_t delete_area(const Target &target, int8_t number) {
    if (number > kHighestAreaNumber) return -1;
    return send_delete(target, build_delete_one(static_cast<uint8_t>(number)));
}

int32_t delete_areas(const Target &target, std::span<const uint8_t> numbers) {
    return send_delete(target, build_delete(static_cast<uint8_t>(numbers.size()), numbers));
}

} // namespace zel::dynamic
