#include "program/area_kinds.h"

#include <algorithm>

#include "program/program_file.h"
#include "program/program_file_g6.h"
#include "render/pictures_area.h"
#include "render/pictures_area_g6.h"

namespace zel {
namespace {

// The view of a rendered picture area that the file writer takes.
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

std::unique_ptr<TKarea> make_pictures_area() {
    return std::make_unique<PicturesArea>();
}

AreaBodyG5 pictures_area_body_g5(TKarea &area) {
    auto &pictures = dynamic_cast<PicturesArea &>(area);
    pictures.renderPages();
    const PictureAreaImage view = picture_area_image(pictures);
    std::vector<uint8_t> body = picture_area_body(view);
    // The writer rewrites the common header's page width for every page; the area keeps the
    // last one written.
    for (const PagePlacement &placement : picture_page_order(view)) {
        if (placement.pictureHeader < 0) {
            pictures.displayRecord.pageWidth = placement.width;
        }
    }
    const auto length = static_cast<uint32_t>(body.size());
    return {length, std::move(body)};
}

std::unique_ptr<TKarea> make_pictures_area_g6() {
    return std::make_unique<PicturesArea_g6>();
}

void keep_pictures_extra_g6(TKarea &area, const AreaExtraG6 &extra) {
    dynamic_cast<PicturesArea_g6 &>(area).areaExtra_G6 = extra;
}

AreaBodyG6 pictures_area_body_g6(TKarea &area, DataFileWriter &data) {
    auto &pictures = dynamic_cast<PicturesArea_g6 &>(area);
    // Page generation reads the G5 header, whose effect the G6 one decides.
    pictures.displayRecord.displayEffect = pictures.displayRecord_G6.displayEffect;
    pictures.renderPages();
    return write_picture_area_g6(pictures, data, FrameCount::Written);
}

} // namespace

void AreaKindTable::add(const AreaKind &kind) {
    const auto same = std::find_if(m_kinds.begin(), m_kinds.end(),
                                   [&](const AreaKind &k) { return k.areaType == kind.areaType; });
    if (same != m_kinds.end()) {
        *same = kind;
    } else {
        m_kinds.push_back(kind);
    }
}

const AreaKind *AreaKindTable::find(uint8_t areaType) const {
    for (const AreaKind &kind : m_kinds) {
        if (kind.areaType == areaType) return &kind;
    }
    return nullptr;
}

void add_program_area_kinds(AreaKindTable &table) {
    table.add({kAreaTypePictures, &make_pictures_area, &pictures_area_body_g5});
}

void add_program_area_kinds_g6(AreaKindTable &table) {
    table.add({kAreaTypePictures, &make_pictures_area_g6, &pictures_area_body_g5,
               &keep_pictures_extra_g6, &pictures_area_body_g6});
}

} // namespace zel
