#include "dynamic/entries_g6.h"

#include "program/screen_settings.h"
#include "sdk/console.h"
#include "sdk/globals.h"
#include "sdk/log.h"

namespace zel::dynamic {
namespace {

// Learns the controller type: by a ping over TCP, by the open line's probe on a serial line
// (the line stays open in `line` for the exchange). 0, or the entry's result on failure in
// `failure`.
bool learn_type(const Target &target, FormG6 form, OpenPeer &line, uint16_t &controllerType,
                int32_t &failure) {
    if (target.serial) {
        line = open_peer(target);
        if (line.initResult == 0) {
            controllerType = line.peer->m_DeviceType;
            return true;
        }
        const char *format =
            form == FormG6::TxtDetails
                ? "oSerialClient.init error! pSerialPort=%s, nSerialPortValueIndex=%d, err=%d"
                : "oSerialClient.init error! pSerialName=%s, nBaudRateIndex=%d, err=%d";
        log_locked(kLogError, format, target.portName.c_str(), target.speedIndex, line.initResult);
        failure = -1;
        return false;
    }
    const int32_t ping = ping_controller_type(target, controllerType);
    if (ping != 0) {
        if (form == FormG6::TxtDetails) {
            log_locked(kLogError, "cmd_tcpPing run error! pIP=%s, nPort=%d, ret=%d",
                       target.address.c_str(), target.port, ping);
            failure = -1;
        } else {
            console_printf("cmd_tcpPing run error...");
            failure = form == FormG6::Txt ? ping : -1;
        }
        return false;
    }
    if (form != FormG6::Txt && form != FormG6::TxtDetails) {
        console_printf("retdata.ControllerType == 0x%x \n", controllerType);
    }
    if (form != FormG6::TxtDetails) console_printf("ret =====cmd_tcpPing===== %d \n", ping);
    return true;
}

enum class PingedType { Store, Keep };

// Connects over TCP for the exchange and tells whether the probe agrees with the ping. The
// single-area entries then send with the ping's type; the sets keep the probe's.
void connect_for_exchange(const Target &target, OpenPeer &line, uint16_t controllerType,
                          PingedType pinged) {
    line = open_peer(target); // a failed connect shows in the exchange
    console_printf("TK_Client init后，Client.m_DeviceType == 0x%x \n", line.peer->m_DeviceType);
    if (line.peer->m_DeviceType != controllerType) {
        console_printf("oClient.m_DeviceType != retdata.ControllerType \n");
    }
    if (pinged == PingedType::Store) line.peer->m_DeviceType = controllerType;
}

std::vector<uint8_t> build_single(FormG6 form, const AreaRequestG6 &area,
                                  const ProgramList &programs) {
    const bool locked = form == FormG6::Txt || form == FormG6::TxtDetails;
    std::unique_ptr<DynamicAreaLockGuard> lock;
    if (locked) lock = std::make_unique<DynamicAreaLockGuard>();
    const RenderedG6 rendered = render_g6(area.rect, area.content);
    DynamicAreaCommand_6G command;
    int32_t result = 0;
    switch (form) {
    case FormG6::Txt:
    case FormG6::Pic:
        result = command.add_item(area.areaID, area.rect);
        break;
    case FormG6::TxtDetails:
        result = command.add_item(area.areaID, area.rect, &area.sound);
        break;
    case FormG6::TxtDetailsWithProgram:
        result = command.add_item_with_programs(area.areaID, area.rect, programs, &area.sound);
        break;
    case FormG6::PicWithProgram:
        result = command.add_item_with_programs(area.areaID, area.rect, programs);
        break;
    }
    if (result == 0) {
        result = command.add_pages(area.areaID, area.content.display, rendered.pages,
                                   rendered.lastPageWidth);
    }
    // A failed step leaves nothing to send; the exchange then carries no data.
    return result == 0 ? command.serialise_whole() : std::vector<uint8_t>{};
}

} // namespace

int32_t add_area_g6(const Target &target, FormG6 form, E_ScreenColor_G56 color,
                    const AreaRequestG6 &area, const ProgramList &programs) {
    OpenPeer line;
    uint16_t controllerType = 0;
    int32_t failure = 0;
    if (!learn_type(target, form, line, controllerType, failure)) return failure;
    setScreenParams_G56(color, controllerType, static_cast<uint32_t>(g_dualPixel.load()));
    const std::vector<uint8_t> data = build_single(form, area, programs);

    if (form == FormG6::TxtDetails) {
        if (!target.serial) {
            line = open_peer(target);
            if (line.initResult != 0) {
                log_locked(kLogError, "oClient.init error! pIP=%s, nPort=%d, err=%d",
                           target.address.c_str(), target.port, line.initResult);
                return -1;
            }
        }
        const int32_t result = exchange(*line.peer, data);
        if (result != 0) {
            const std::string &where = target.serial ? target.portName : target.address;
            const int port = target.serial ? target.speedIndex : target.port;
            log_locked(kLogError,
                       "send_recv_cmd_1K error! pIP=%s, nPort=%d, DataLen=%d, nSendResutl=%d",
                       where.c_str(), port, static_cast<int>(data.size()), result);
            return -1;
        }
        return 0;
    }
    if (!target.serial) connect_for_exchange(target, line, controllerType, PingedType::Store);
    const int32_t result = exchange(*line.peer, data);
    return form == FormG6::Txt ? result : narrow16(result);
}

int32_t add_set_g6(const Target &target, bool pictures, bool withPrograms, E_ScreenColor_G56 color,
                   std::span<const AreaRequestG6> areas, const ProgramList &programs) {
    DynamicAreaCommand_6G command;
    OpenPeer line;
    uint16_t controllerType = 0;
    int32_t failure = 0;
    // The sets print and log as the single picture entries do.
    if (!learn_type(target, FormG6::Pic, line, controllerType, failure)) return failure;
    setScreenParams_G56(color, controllerType, static_cast<uint32_t>(g_dualPixel.load()));
    command.clear();
    for (const AreaRequestG6 &area : areas) {
        // Only the text sets with programs render under the lock; the others never did.
        std::unique_ptr<DynamicAreaLockGuard> lock;
        if (withPrograms && !pictures) lock = std::make_unique<DynamicAreaLockGuard>();
        const RenderedG6 rendered = render_g6(area.rect, area.content);
        int32_t result = withPrograms ? command.add_item_with_programs(area.areaID, area.rect,
                                                                       programs, &area.sound)
                                      : command.add_item(area.areaID, area.rect, &area.sound);
        if (result == 0) {
            result = command.add_pages(area.areaID, area.content.display, rendered.pages,
                                       rendered.lastPageWidth);
        }
        if (result != 0) return result;
    }
    const std::vector<uint8_t> data = command.serialise_split();
    if (!target.serial) connect_for_exchange(target, line, controllerType, PingedType::Keep);
    return exchange(*line.peer, data);
}

int32_t insert_sound(const Target &target, uint8_t first, uint8_t second,
                     const DynamicSound &sound) {
    OpenPeer line = open_peer(target);
    return exchange(*line.peer, build_sound_insert(first, second, sound), true);
}

int32_t update_sound(const Target &target, uint8_t first, std::span<const SoundUpdateItem> items) {
    OpenPeer line = open_peer(target);
    return exchange(*line.peer, build_sound_update(first, items), true);
}

} // namespace zel::dynamic
