#include "program/program_obj_g6.h"

#include "program/data_file.h"
#include "program/program_file_g6.h"
#include "sdk/console.h"

namespace zel {

int32_t ProgramObj_g6::set_header_g6(const ProgramHeaderG6 &header, bool trace) {
    const std::optional<FileName> name = program_file_name(header.programNumber);
    if (!name) {
        return -1;
    }
    if (trace) {
        trace_program_header_g6(header, *name);
    }
    m_dataFileName = zel::data_file_name(*name);
    m_headerG6 = header;
    m_headerG6Name = *name;
    set_file_name(*name);
    return 0;
}

int32_t ProgramObj_g6::add_frame_g6(const FrameParamsG6 &params, const std::string &pngPath) {
    if (has_frame()) {
        return -1;
    }
    m_frameHeaderG6 = params.header();
    if (!load_frame_picture(pngPath, true)) {
        return -1;
    }
    encode_frame();
    return 0;
}

int32_t ProgramObj_g6::change_frame_g6(const FrameParamsG6 &params, const std::string &pngPath) {
    if (!has_frame()) {
        console_printf("Error:No frame have been added.\n");
        return -1;
    }
    m_frameHeaderG6 = params.header();
    if (!has_frame_picture()) {
        return -1;
    }
    if (!load_frame_picture(pngPath, false)) {
        // The new header now stands beside the old strip. Deliberate.
        return -1;
    }
    encode_frame();
    return 0;
}

const ProgramFilesG6 &ProgramObj_g6::integrate_g6() {
    m_files = ProgramFilesG6{};
    DataFileWriter data(m_dataFileName);
    ProgramImageHeadG6 head;
    head.header = header_bytes_g6(m_headerG6, m_headerG6Name);
    head.hasPlayPeriods = has_play_periods() ? 1 : 0;
    head.playPeriods = play_periods();
    head.hasFrame = has_frame();
    head.frameHeader = m_frameHeaderG6;
    head.frameData = frame_strip();
    head.hasBackground = has_background();
    head.areaCount = area_count();
    std::vector<uint8_t> image = begin_program_image_g6(head);
    for (const auto &area : areas()) {
        // An area of a kind without a G6 body leaves nothing; the count stays.
        const AreaKind *kind = kinds().find(area->areaType);
        if (kind != nullptr && kind->bodyG6 != nullptr) {
            const AreaBodyG6 body = kind->bodyG6(*area, data);
            append_area_block(image, body.declaredLength, body.bytes);
        }
    }
    ProgramFilesG6 files;
    files.program.name = file_name();
    files.program.crc = finish_program_image(image);
    files.program.data = std::move(image);
    files.data.name = m_dataFileName;
    files.data.type = kDataFileType;
    files.data.data = data.finish(files.data.crc);
    m_files = std::move(files);
    return m_files;
}

} // namespace zel
