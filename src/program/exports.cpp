// Exported entries of the program family.
#include "zel_sdk_dual.h"

#include "sdk/host_buffer.h"

using namespace zel;

extern "C" {

ZEL_API int32_t zelDual_program_freeBuffer(ZelProgramFile_G5 *file) {
    if (file != nullptr) {
        uint8_t *data = file->fileData;
        host_free(data);
        file->fileData = data;
    }
    return 0;
}

ZEL_API int32_t zelDual_program_freeBuffer_G6(ZelProgramFile_G6 *file) {
    if (file != nullptr) {
        // Packed fields cannot bind to a reference, hence the copies.
        uint8_t *data = file->dataFileData; // the data file goes first
        host_free(data);
        file->dataFileData = data;
        uint8_t *program = file->programFileData;
        host_free(program);
        file->programFileData = program;
    }
    return 0;
}

} // extern "C"
