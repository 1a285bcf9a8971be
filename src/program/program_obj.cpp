#include "program/program_obj.h"

#include <algorithm>

#include "sdk/console.h"

namespace zel {
namespace {

constexpr char kNoFramePng[] = "Error:Can't find frame png.\n";

} // namespace

ProgramObj::ProgramObj(const AreaKindTable &kinds) : m_kinds(&kinds) {}

ProgramObj::~ProgramObj() = default;

int32_t ProgramObj::set_header(const ProgramHeaderG5 &header) {
    const std::optional<FileName> name = program_file_name(header.programNumber);
    if (!name) {
        return -1;
    }
    m_header = header;
    m_headerName = *name;
    m_fileName = *name;
    return 0;
}

void ProgramObj::set_play_periods(PlayPeriods periods) {
    if (!periods.empty()) {
        m_hasPlayPeriods = true;
        m_playPeriods = std::move(periods);
        m_header.playPeriodFlag = 1;
    } else {
        m_hasPlayPeriods = false;
        m_header.playPeriodFlag = 0;
    }
}

int32_t ProgramObj::add_area(uint16_t areaID, uint8_t areaType, const AreaRect &rect) {
    if (areaType != kAreaTypePictures && areaType != kAreaTypeTime) {
        return -1;
    }
    const AreaKind *kind = m_kinds->find(areaType);
    if (kind == nullptr || kind->make == nullptr) {
        return -1;
    }
    place_area(areaID, kind->make(), areaType, rect);
    return 0;
}

void ProgramObj::place_area(uint16_t areaID, std::unique_ptr<TKarea> area, uint8_t areaType,
                            const AreaRect &rect) {
    // A replaced area leaves its place; the new one goes to the end, and the count still
    // rises, so the file's count stands one above its area blocks. Deliberate.
    erase_area(areaID);
    area->set_area_header(areaType, rect);
    area->areaID = areaID;
    m_areas.push_back(std::move(area));
    ++m_areaCount;
}

int32_t ProgramObj::add_area_g6(uint16_t areaID, uint8_t areaType, const AreaRect &rect,
                                const AreaExtraG6 &extra, const AreaKindTable &kindsG6) {
    console_printf("============== zelDual_program_addArea_G6 =============== \r\n");
    console_printf("areaID = %d; \r\n \t\t\tAreaType = %d, AreaX = %d, AreaY = %d, "
                   "AreaWidth = %d, AreaHeight = %d;\r\n \t\t\tBackGroundFlag = %d, "
                   "Transparency = %d, AreaEqual = %d; \r\n ",
                   areaID, areaType, rect.x, rect.y, rect.width, rect.height, extra.backGroundFlag,
                   extra.transparency, extra.areaEqual);
    // The old area goes first, also when the type makes no new one.
    erase_area(areaID);
    const AreaKind *kind = kindsG6.find(areaType);
    if (kind == nullptr || kind->make == nullptr) {
        ++m_areaCount;
        return 0;
    }
    std::unique_ptr<TKarea> area = kind->make();
    if (kind->keepExtraG6 != nullptr) {
        kind->keepExtraG6(*area, extra);
    }
    place_area(areaID, std::move(area), areaType, rect);
    if (areaType == kAreaTypeBackground) {
        m_hasBackground = true; // not cleared when the background goes
    }
    return 0;
}

void ProgramObj::erase_area(uint16_t areaID) {
    const auto same = std::find_if(m_areas.begin(), m_areas.end(),
                                   [&](const auto &a) { return a->areaID == areaID; });
    if (same != m_areas.end()) {
        m_areas.erase(same);
    }
}

void ProgramObj::delete_area(uint16_t areaID) {
    const auto found = std::find_if(m_areas.begin(), m_areas.end(),
                                    [&](const auto &a) { return a->areaID == areaID; });
    if (found != m_areas.end()) {
        m_areas.erase(found);
        --m_areaCount;
    } else if (areaID == kAllAreas) {
        m_areas.clear();
        m_areaCount = 0;
    }
}

int32_t ProgramObj::move_area(uint16_t areaID, const AreaRect &rect) {
    TKarea *area = find_area(areaID);
    if (area == nullptr) {
        console_printf("Error:Wrong areaID.This area does not exist.\n");
        return kWrongAreaId;
    }
    area->set_rect(rect);
    area->layoutText();
    return 0;
}

TKarea *ProgramObj::find_area(uint16_t areaID) const {
    for (const auto &area : m_areas) {
        if (area->areaID == areaID) return area.get();
    }
    return nullptr;
}

bool ProgramObj::load_frame_picture(const std::string &pngPath, bool freshHolder) {
    if (freshHolder || !m_framePicture) {
        m_framePicture = std::make_unique<PicturesAreaFrame>();
    }
    m_framePicture->load(pngPath);
    if (m_framePicture->framePixels == nullptr) {
        console_write(kNoFramePng, sizeof kNoFramePng - 1);
        return false;
    }
    return true;
}

void ProgramObj::encode_frame() {
    const TKarea scratch; // only for its gamma tables
    std::vector<uint8_t> strip = m_framePicture->encode(scratch);
    m_frameData = std::move(strip);
    m_hasFrame = true;
}

void ProgramObj::add_frame(const FrameHeaderG5 &header, const std::string &pngPath) {
    m_hasFrame = false;
    m_frameHeader = header;
    if (load_frame_picture(pngPath, false)) {
        encode_frame();
    }
}

void ProgramObj::remove_frame() {
    m_framePicture.reset();
    m_hasFrame = false;
}

const ProgramFileImage &ProgramObj::integrate() {
    m_image.data.clear();
    ProgramImageHead head;
    head.header = header_bytes(m_header, m_headerName);
    head.hasPlayPeriods = m_hasPlayPeriods ? 1 : 0;
    head.playPeriods = m_playPeriods;
    head.hasFrame = m_hasFrame;
    head.frameHeader = m_frameHeader.bytes();
    head.frameData = m_frameData;
    head.hasBackground = m_hasBackground; // set only by a G6 program's background
    head.areaCount = m_areaCount;
    std::vector<uint8_t> image = begin_program_image(head);
    for (const auto &area : m_areas) {
        // An area of a kind that writes no G5 body leaves nothing, and the count stays.
        const AreaKind *kind = m_kinds->find(area->areaType);
        if (kind != nullptr && kind->bodyG5 != nullptr) {
            const AreaBodyG5 body = kind->bodyG5(*area);
            append_area_block(image, body.declaredLength, body.bytes);
        }
    }
    m_image.crc = finish_program_image(image);
    m_image.name = m_fileName;
    m_image.data = std::move(image);
    write_program_trace(m_image.data);
    return m_image;
}

} // namespace zel
