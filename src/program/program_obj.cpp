#include "program/program_obj.h"

#include <algorithm>
#include <cstring>
#include <typeinfo>

#include "program/time_area_support.h"
#include "render/pictures_area.h"
#include "sdk/bytes.h"
#include "sdk/console.h"

namespace zel {

ProgramObj::ProgramObj() = default;
ProgramObj::~ProgramObj() = default;

int32_t ProgramObj::setHeader(uint8_t *record) {
    const std::string name = program_file_name(read_u32_le({record, kProgramHeaderSize}, 1));
    if (name.empty()) {
        return -1;
    }
    // The name replaces the number in the caller's record too.
    std::memcpy(record + 1, name.data(), 4);
    std::copy_n(record, kProgramHeaderSize, header.begin());
    std::copy_n(name.data(), 4, fileName.begin());
    return 0;
}

void ProgramObj::addPlayPeriodGrp(const uint8_t *block) {
    if (block[0] != 0) {
        hasPlayPeriods = 1;
        std::copy_n(block, kPlayPeriodBlockSize, playPeriods.begin());
        header[6] = 1;
    } else {
        hasPlayPeriods = 0;
        header[6] = 0;
    }
}

int32_t ProgramObj::addArea(uint16_t areaID, const uint8_t *record) {
    std::unique_ptr<TKarea> area;
    if (record[0] == kAreaTypePictures) {
        area = std::make_unique<PicturesArea>();
    } else if (record[0] == kAreaTypeTime) {
        area = make_time_area_g5();
    }
    if (!area) {
        return -1;
    }
    // A replaced area leaves its place; the new one goes to the end, and the count still
    // rises, so the file's count stands one above its area blocks. Deliberate.
    const auto same = std::find_if(areas.begin(), areas.end(),
                                   [&](const auto &a) { return a->areaID == areaID; });
    if (same != areas.end()) {
        areas.erase(same);
    }
    area->setAreaHeader(record, kAreaRecordSize);
    area->areaID = areaID;
    areas.push_back(std::move(area));
    ++areaCount;
    return 0;
}

void ProgramObj::deleteArea(uint16_t areaID) {
    const auto found = std::find_if(areas.begin(), areas.end(),
                                    [&](const auto &a) { return a->areaID == areaID; });
    if (found != areas.end()) {
        areas.erase(found);
        --areaCount;
    } else if (areaID == kAllAreas) {
        areas.clear();
        areaCount = 0;
    }
}

int32_t ProgramObj::moveArea(uint16_t areaID, uint32_t x, uint32_t y, int32_t width,
                             int32_t height) {
    TKarea *area = findArea(areaID);
    if (area == nullptr) {
        console_printf("Error:Wrong areaID.This area does not exist.\n");
        return kWrongAreaId;
    }
    area->setRect(static_cast<uint16_t>(x), static_cast<uint16_t>(y), static_cast<uint16_t>(width),
                  static_cast<uint16_t>(height));
    area->layoutText();
    return 0;
}

TKarea *ProgramObj::findArea(uint16_t areaID) const {
    for (const auto &area : areas) {
        if (area->areaID == areaID) return area.get();
    }
    return nullptr;
}

PicturesArea *ProgramObj::findPicturesArea(uint16_t areaID) const {
    return dynamic_cast<PicturesArea *>(findArea(areaID));
}

PictureAreaImage picture_area_image(const PicturesArea &area) {
    PictureAreaImage image;
    image.areaHeader = area.areaHeader;
    image.frameEnabled = area.frameEnabled != 0;
    image.frameRecord = area.frameRecord;
    image.frameData =
        std::span<const uint8_t>(area.frameData)
            .first(std::min<std::size_t>(area.frameDataLength, area.frameData.size()));
    image.displayRecord = area.displayRecord.bytes();
    image.drawWidth = area.drawWidth;
    image.lastPageWidth = area.lastPageWidth;
    image.textPageCount = area.textPageCount;
    for (const PictureDetail &detail : area.pictureDetails) {
        image.pictureHeaders.push_back(detail.record.bytes());
    }
    for (const auto &page : area.encodedPages) {
        image.pages.emplace_back(page);
    }
    return image;
}

void ProgramObj::integrate() {
    fileData.clear();
    ProgramImageHead head;
    head.header = header;
    head.hasPlayPeriods = hasPlayPeriods;
    head.playPeriods = playPeriods;
    head.hasFrame = hasFrame != 0;
    head.frameHeader = frameHeader;
    head.frameData = std::span<const uint8_t>(frameData).first(
        std::min<std::size_t>(frameDataLen, frameData.size()));
    head.hasBackground = hasBackground != 0;
    head.areaCount = areaCount;
    std::vector<uint8_t> image = begin_program_image(head);

    for (const auto &area : areas) {
        if (area->areaType == kAreaTypePictures) {
            auto *pictures = dynamic_cast<PicturesArea *>(area.get());
            if (pictures == nullptr) continue;
            pictures->renderPages();
            const PictureAreaImage view = picture_area_image(*pictures);
            append_picture_area_block(image, view);
            // The writer rewrites the common header's page width for every page; the area
            // keeps the last one written.
            for (const PagePlacement &placement : picture_page_order(view)) {
                if (placement.pictureHeader < 0) {
                    pictures->displayRecord.pageWidth = placement.width;
                }
            }
        } else if (area->areaType == kAreaTypeTime) {
            append_area_block(image, time_area_body_g5(*area));
        }
        // Any other type writes nothing, and the count does not change for that.
    }
    fileCrc = finish_program_image(image);
    fileData = std::move(image);
    write_program_trace(fileData);
}

ProgramObj *current_program_g5() {
    ProgramObject *program = program_access_g5();
    // A G6 program met by a G5 entry is that entry's failure, not a G5 program.
    if (program == nullptr || typeid(*program) != typeid(ProgramObj)) {
        return nullptr;
    }
    return static_cast<ProgramObj *>(program);
}

} // namespace zel
