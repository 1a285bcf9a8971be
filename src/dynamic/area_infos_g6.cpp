#include "dynamic/area_infos_g6.h"

#include <algorithm>

#include "program/screen_settings.h"
#include "render/encode.h"
#include "render/pictures_area_frame.h"
#include "render/screen_format.h"
#include "sdk/console.h"
#include "sdk/globals.h"
#include "sdk/log.h"

namespace zel::dynamic {
namespace {

// The item lists render their pages for a two-colour plane order of 2, whatever was set; only
// the frame, and the V2 form's pages, follow zelDual_dynamicArea_SetDualPixel.
constexpr uint32_t kItemListDoubleColor = 2;

bool is_serial(InfosForm form) {
    return form == InfosForm::Serial || form == InfosForm::V2Serial;
}

// Learns the controller's type: on a serial line from the line's probe (the open line is left
// in `line`), over TCP from a ping. 0, or the result the entry gives.
int32_t learn_controller_type(const Target &target, InfosForm form, OpenPeer &line,
                              uint16_t &controllerType) {
    if (is_serial(form)) {
        line = open_peer(target);
        if (line.initResult != 0) {
            log_locked(kLogError,
                       "oSerialClient.init error! pCharsCOMPort=%s, nSerialPortValueIndex=%d, "
                       "err=%d",
                       target.portName.c_str(), target.speedIndex, line.initResult);
            return -1;
        }
        controllerType = line.peer->m_DeviceType;
        return 0;
    }
    const int32_t ping = ping_controller_type(target, controllerType);
    if (ping != 0) console_printf("cmd_tcpPing run error...");
    return ping;
}

// Encodes the frame strip at column 0 for the entry's own colour, with the pixel mode and
// double colour that the globals hold: the V2 serial form sets the screen only in the worker,
// after this, so its strip takes the mode and plane order of the call before. Empty optional
// when the PNG does not read.
std::optional<std::vector<uint8_t>> encode_frame(const InfosRequestG6 &request,
                                                 E_ScreenColor_G56 color) {
    PicturesAreaFrame frame;
    frame.load(request.framePng);
    if (frame.framePixels == nullptr) return std::nullopt;
    const TKarea scratch; // only for its gamma tables
    PixelFormat format = screen_pixel_format();
    format.colorMode = static_cast<int32_t>(color);
    const auto bytes = static_cast<std::size_t>(std::max(frame.frameLength, 0)) *
                       static_cast<std::size_t>(std::max(frame.frameThickness, 0)) * 4;
    std::vector<uint8_t> strip;
    encodePixels(std::span<const uint8_t>(frame.framePixels, bytes), strip, 0,
                 static_cast<uint32_t>(frame.frameLength),
                 static_cast<uint32_t>(frame.frameThickness), format, area_gamma(scratch));
    return strip;
}

int32_t worker(const Target &target, InfosForm form, E_ScreenColor_G56 color,
               const InfosRequestG6 &request, const std::vector<uint8_t> *frameStrip) {
    const std::string firstFont = request.contents.empty() ? "" : request.contents[0].font;
    log_locked(kLogDebug, "uWidth = %d;  uHeight = %d;  fontName = %s; \r\n", request.rect.width,
               request.rect.height, firstFont.c_str());
    OpenPeer line;
    uint16_t controllerType = 0;
    if (const int32_t learnt = learn_controller_type(target, form, line, controllerType);
        learnt != 0) {
        return learnt;
    }
    const uint32_t doubleColor =
        form == InfosForm::V2 ? static_cast<uint32_t>(g_dualPixel.load()) : kItemListDoubleColor;
    setScreenParams_G56(color, controllerType, doubleColor);

    // The frame takes its thickness off every side of the room the pages are rendered for.
    AreaRect inner = request.rect;
    if (request.frameFlag == 1) {
        const uint16_t t = request.frameHeader[4];
        // A frame thicker than half the area leaves no room rather than a wrapped size.
        const auto less = [t](uint16_t side) {
            return side > 2 * t ? static_cast<uint16_t>(side - 2 * t) : uint16_t{0};
        };
        inner.x = static_cast<uint16_t>(inner.x + t);
        inner.y = static_cast<uint16_t>(inner.y + t);
        inner.width = less(inner.width);
        inner.height = less(inner.height);
    }
    std::vector<RenderedG6> rendered;
    for (ContentG6 content : request.contents) {
        content.fontTest = form != InfosForm::Plain && form != InfosForm::Serial;
        DynamicAreaLockGuard lock;
        if (content.kind == kContentText || content.kind == kContentPicture) {
            rendered.push_back(render_g6(inner, content));
        } else {
            rendered.emplace_back(); // a kind of its own: no pages
        }
    }

    DynamicAreaItem_6G item;
    item.areaID = request.areaID;
    item.runMode = request.runMode;
    item.timeout = request.timeout;
    item.allPrograms = request.allPrograms;
    item.programCount = request.programs.count;
    item.programs = request.programs.numbers;
    item.immediate = request.immediate;
    item.rect = request.rect;
    item.hasFrame = request.frameFlag;
    if (request.frameFlag == 1 && frameStrip != nullptr) {
        item.frame.header = request.frameHeader;
        item.frame.strip = *frameStrip;
    }
    if (form == InfosForm::V2 && request.sound && request.sound->enabled == 1) {
        item.hasSound = 1;
        item.sound = *request.sound;
    }
    uint32_t offset = 0;
    const uint16_t w = request.rect.width;
    for (std::size_t c = 0; c < rendered.size(); ++c) {
        const ContentG6 &content = request.contents[c];
        const auto &pages = rendered[c].pages;
        const std::size_t n = pages.size();
        const bool reversed = content.display.displayEffect == kEffectReversedPages;
        for (std::size_t i = 0; i < n; ++i) {
            const std::size_t index = reversed ? n - 1 - i : i;
            PageDisplayRecord_G6 header = content.display;
            header.pageByte0 = 0;
            const bool showsLast = reversed ? index == 0 : index == n - 1;
            header.pageWidth = showsLast ? std::min(w, rendered[c].lastPageWidth) : w;
            const auto size = static_cast<uint32_t>(pages[index].size());
            item.pageRecords.push_back(page_record_g6(header, offset, size));
            item.pixels.push_back(pages[index]);
            offset += size;
            item.pageCount = static_cast<uint16_t>(item.pageCount + 1);
        }
    }
    std::vector<uint8_t> data;
    if (!(request.programs.count > 0 && request.programsMissing)) {
        DynamicAreaCommand_6G command;
        command.add_built_item(std::move(item));
        data = command.serialise_whole();
    }
    if (data.empty()) return -1;

    if (!is_serial(form)) {
        line = open_peer(target); // a failed connect shows in the exchange
        if (line.peer->m_DeviceType != controllerType) {
            console_printf("oClient.m_DeviceType != retdata.ControllerType \n");
        }
    }
    const int32_t result = exchange(*line.peer, data);
    if (result != 0) {
        console_printf(is_serial(form)
                           ? "Failed! oSerialClient.send_recv_cmd!  nSendResult = %d \r\n"
                           : "Failed! oClient.send_recv_cmd!  nSendResult = %d \r\n",
                       result);
    }
    return result;
}

} // namespace

int32_t add_area_infos_g6(const Target &target, InfosForm form, E_ScreenColor_G56 color,
                          const InfosRequestG6 &request) {
    uint16_t controllerType = 0;
    {
        // A serial line is opened for its type and closed again before the worker opens it: an
        // exclusive line cannot be opened twice.
        OpenPeer line;
        if (const int32_t learnt = learn_controller_type(target, form, line, controllerType);
            learnt != 0) {
            return learnt;
        }
    }
    if (form != InfosForm::V2Serial) {
        setScreenParams_G56(color, controllerType, static_cast<uint32_t>(g_dualPixel.load()));
    }
    std::optional<std::vector<uint8_t>> strip;
    if (request.frameFlag == 1) {
        strip = encode_frame(request, color);
        if (!strip) {
            console_printf("Error: zel_dual_sdk Can't create_from_png. file: %s \n",
                           request.framePng.c_str());
            return -1;
        }
    }
    if (request.contents.empty()) return -1;
    return worker(target, form, color, request, strip ? &*strip : nullptr);
}

} // namespace zel::dynamic
