/*
 * The road of a G6 program, as a host application walks it:
 *
 *   1. start the library and ping the controller, which tells its type;
 *   2. set the screen: colours, controller type (it chooses the pixel format), plane order;
 *   3. build the program: header, a background behind everything, a text area, a picture area
 *      that also speaks a text, and a digital clock;
 *   4. integrate it into its two files: the program file "P002" with the structure and the data
 *      file "D002" with every page's pixels (everything is rendered now);
 *   5. write both files to the controller's file system;
 *   6. hand the files back, delete the program, stop the library.
 *
 * Usage: zel_demo_g6 ADDRESS PORT [PANEL_DIR]
 * With PANEL_DIR (the --panel-out folder of zel-sim) it ends by naming the pictures of the
 * panel that the simulator made of the program.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "demo_support.h"
#include "zel_sdk_dual.h"

static const char *const kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

/* The picture: a red arrow pointing right on dark, 32 x 32. */
static int make_picture(void) {
    uint8_t picture[32 * 32 * 3];
    int x, y;
    memset(picture, 0, sizeof picture);
    for (y = 0; y < 32; ++y) {
        for (x = 0; x < 32; ++x) {
            const int dy = y < 16 ? 15 - y : y - 16;
            const int shaft = x >= 4 && x < 18 && dy < 4;
            const int head = x >= 18 && x < 30 && dy < 30 - x;
            picture[3 * (y * 32 + x)] = (shaft || head) ? 255 : 0;
        }
    }
    return write_png("demo-arrow.png", 32, 32, picture);
}

static int fail(const char *what, int32_t result) {
    printf("demo_g6: %s failed with %d\n", what, (int)result);
    zelDual_program_deleteProgram_G6();
    zelDual_ReleaseSdk();
    return 1;
}

/* A G6 area record: where it stands and what it holds; the three bytes behind the rectangle
 * are the controller's. */
static ZelAreaRecord_G6 area(uint8_t type, uint16_t x, uint16_t y, uint16_t w, uint16_t h) {
    ZelAreaRecord_G6 a;
    memset(&a, 0, sizeof a);
    a.AreaType = type;
    a.AreaX = x;
    a.AreaY = y;
    a.AreaWidth = w;
    a.AreaHeight = h;
    return a;
}

static int32_t write_file(const char *address, uint16_t port, const char *name, uint8_t type,
                          uint32_t length, const uint8_t *data) {
    char shown[5] = {0};
    const int32_t r = zelDual_cmd_ofsWriteFile(address, port, name, type, length, 1, data);
    memcpy(shown, name, 4);
    if (r == 0) printf("demo_g6: %s written, %u bytes\n", shown, (unsigned)length);
    return r;
}

int main(int argc, char **argv) {
    const char *address = argc > 1 ? argv[1] : "127.0.0.1";
    const uint16_t port = (uint16_t)(argc > 2 ? atoi(argv[2]) : 5005);
    const char *panel_dir = argc > 3 ? argv[3] : NULL;
    ZelPingRecord ping;
    ZelProgramHeader_G6 header;
    ZelAreaRecord_G6 background, text_area, picture_area, clock_area;
    TextPageParams_G6 page, text_style;
    ZelSoundParams_G6 sound;
    TimeContentRecord clock;
    ZelProgramFile_G6 files;
    char name[5] = {0};
    int32_t r;

    /* 1. Start, and ask the controller what it is. */
    zelDual_InitSdk();
    r = zelDual_cmd_tcpPing(address, port, &ping);
    if (r != 0) return fail("ping", r);
    printf("demo_g6: controller type 0x%04X at %s:%u\n", ping.ControllerType, address, port);

    /* 2. A two-colour screen; everything below is encoded for it. */
    zelDual_program_setScreenParams_G56(2, ping.ControllerType, 1);

    /* 3. The program. Its number 2 names the program file "P002" and the data file "D002". */
    memset(&header, 0, sizeof header);
    header.ProgramName = 2;
    header.ProgramPlayTimes = 1;
    header.ProgramWeek = 0xFF; /* every day */
    header.ProgramLifeSpan_sy = 0xFFFF;
    header.ProgramLifeSpan_ey = 0xFFFF;
    r = zelDual_program_addProgram_G6(&header);
    if (r != 0) return fail("addProgram_G6", r);

    /* A background of the whole screen, one colour (green), behind the other areas: it shows
     * where they leave room, at the bottom right. */
    memset(&page, 0, sizeof page);
    page.displayEffect = 1;
    background = area(11, 0, 0, 128, 64);
    zelDual_program_addArea_G6(1, &background);
    r = zelDual_program_backGroundColor_G6(1, &page, 2);
    if (r != 0) return fail("backGroundColor_G6", r);

    /* A text area of 96 x 32 at the top left: three lines of 12-pixel text in yellow. */
    text_area = area(0, 0, 0, 96, 32);
    zelDual_program_addArea_G6(2, &text_area);
    memset(&text_style, 0, sizeof text_style);
    text_style.displayEffect = 1;
    text_style.arrMode = 1;    /* several lines, broken into pages */
    text_style.fontSize = 9;   /* points: 12 pixels */
    text_style.fontColor = 3;  /* yellow */
    text_style.horizontalAlign = 1;
    text_style.verticalAlign = 1;
    r = zelDual_program_fontPath_picturesAreaAddTxt_G6(2, "Platform 3\nNext train\n10:42", kFont,
                                                       &text_style);
    if (r != 0) return fail("fontPath_picturesAreaAddTxt_G6", r);

    /* A picture area of 32 x 32 at the top right that also speaks a text when it plays. The
     * sound's settings are the controller's. */
    if (make_picture() != 0) return fail("writing the demo picture", -1);
    picture_area = area(0, 96, 0, 32, 32);
    zelDual_program_addArea_G6(3, &picture_area);
    /* The path is kept, not copied: a string literal lives long enough. */
    r = zelDual_program_pictureAreaAddPic_G6(3, 0, &page, "demo-arrow.png");
    if (r != 0) return fail("pictureAreaAddPic_G6", r);
    memset(&sound, 0, sizeof sound);
    sound.soundSettings1[0] = 1;
    sound.soundValue1 = 1;
    r = zelDual_program_pictureAreaEnableSound_G6(3, &sound, "Platform 3, exit right");
    if (r != 0) return fail("pictureAreaEnableSound_G6", r);

    /* A digital clock of 96 x 32 under the text, the controller keeps it running: the date
     * and the time on rows of their own, in red. Its background and glyph tables go to the data
     * file with the pages. */
    clock_area = area(2, 0, 32, 96, 32);
    zelDual_program_addArea_G6(4, &clock_area);
    memset(&clock, 0, sizeof clock);
    clock.arrMode = 1;         /* a row per field */
    clock.fontColor = 1;       /* red */
    clock.fontName = kFont;    /* a font file: the fontPath entry below */
    clock.fontSize = 9;        /* 12 pixels */
    clock.horizontalAlign = 1; /* centred */
    clock.dateEnable = 1;
    clock.dateFormat = 0;      /* 2026-11-15 */
    clock.timeEnable = 1;
    clock.timeFormat = 0;      /* 13:45:30 */
    r = zelDual_program_fontPath_timeAreaAddContent_G6(4, &clock);
    if (r != 0) return fail("fontPath_timeAreaAddContent_G6", r);

    /* 4. Two files, each closed by its CRC-32. */
    memset(&files, 0, sizeof files);
    r = zelDual_program_IntegrateProgramFile_G6(&files);
    if (r != 0) return fail("IntegrateProgramFile_G6", r);
    memcpy(name, files.programFileName, 4);

    /* 5. Both into the controller's file system, overwriting files of those names. */
    r = write_file(address, port, files.programFileName, files.programFileType,
                   files.programFileLen, files.programFileData);
    if (r == 0) {
        r = write_file(address, port, files.dataFileName, files.dataFileType, files.dataFileLen,
                       files.dataFileData);
    }
    zelDual_program_freeBuffer_G6(&files); /* 6. */
    if (r != 0) return fail("ofsWriteFile", r);

    zelDual_program_deleteProgram_G6();
    zelDual_ReleaseSdk();
    if (panel_dir != NULL) list_panel_pictures(panel_dir, name);
    return 0;
}
