/*
 * The road of a G5 program, as a host application walks it:
 *
 *   1. start the library and ping the controller, which tells its type;
 *   2. set the screen: colours, controller type (it chooses the pixel format), plane order;
 *   3. build the program: header, a text area with several pages, a picture area with a frame,
 *      a digital clock and an analog clock;
 *   4. integrate it into one file image (everything is rendered now);
 *   5. write the image to the controller's file system;
 *   6. hand the image back, delete the program, stop the library.
 *
 * Usage: zel_demo ADDRESS PORT [PANEL_DIR]
 * With PANEL_DIR (the --panel-out folder of zel-sim) it ends by naming the pictures of the
 * panel that the simulator made of the program.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "zel_sdk_dual.h"
#include "demo_support.h"

static const char *const kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

/* The picture: four quarters in red, green, yellow and dark. The frame: a dashed red strip,
 * 16 pixels long and 2 high (its height is the frame's thickness). */
static int make_pictures(void) {
    uint8_t picture[32 * 32 * 3], strip[16 * 2 * 3];
    int x, y;
    for (y = 0; y < 32; ++y) {
        for (x = 0; x < 32; ++x) {
            uint8_t *px = picture + 3 * (y * 32 + x);
            const int quarter = (y >= 16) * 2 + (x >= 16);
            px[0] = (quarter == 0 || quarter == 2) ? 255 : 0;
            px[1] = (quarter == 1 || quarter == 2) ? 255 : 0;
            px[2] = 0;
        }
    }
    for (y = 0; y < 2; ++y) {
        for (x = 0; x < 16; ++x) {
            uint8_t *px = strip + 3 * (y * 16 + x);
            px[0] = (x % 8) < 5 ? 255 : 0;
            px[1] = 0;
            px[2] = 0;
        }
    }
    return write_png("demo-picture.png", 32, 32, picture) == 0 &&
                   write_png("demo-frame.png", 16, 2, strip) == 0
               ? 0
               : -1;
}

static int fail(const char *what, int32_t result) {
    printf("demo: %s failed with %d\n", what, (int)result);
    zelDual_program_deleteProgram();
    zelDual_ReleaseSdk();
    return 1;
}

int main(int argc, char **argv) {
    const char *address = argc > 1 ? argv[1] : "127.0.0.1";
    const uint16_t port = (uint16_t)(argc > 2 ? atoi(argv[2]) : 5005);
    const char *panel_dir = argc > 3 ? argv[3] : NULL;
    ZelPingRecord ping;
    ZelProgramHeader_G5 header;
    ZelAreaRecord_G5 text_area, picture_area, clock_area, dial_area;
    ZelFrameHeader_G5 frame;
    TimeContentRecord clock;
    AnalogClockRecord hands;
    ZelDialMarkColors dial_colors;
    TextPageParams_G5 text_style, picture_page;
    ZelProgramFile_G5 file;
    char name[5] = {0};
    int32_t r;

    /* 1. Start, and ask the controller what it is. */
    zelDual_InitSdk();
    r = zelDual_cmd_tcpPing(address, port, &ping);
    if (r != 0) return fail("ping", r);
    printf("demo: controller type 0x%04X at %s:%u\n", ping.ControllerType, address, port);

    /* 2. A two-colour screen (red and green, yellow where both light); the controller type
     *    chooses how pixels are packed. Everything below is encoded for this screen. */
    zelDual_program_setScreenParams_G56(2, ping.ControllerType, 1);

    /* 3. The program. Its number 1 becomes the file name "P001". */
    memset(&header, 0, sizeof header);
    header.ProgramName = 1;
    header.ProgramPlayTimes = 1;
    header.ProgramWeek = 0xFF; /* every day */
    header.ProgramLifeSpan_sy = 0xFFFF;
    header.ProgramLifeSpan_ey = 0xFFFF;
    r = zelDual_program_addProgram(&header);
    if (r != 0) return fail("addProgram", r);

    /* A text area of 96 x 32 at the left: four lines of 12-pixel text, two to a page. A line
     * too long for the area would be broken at the character that no longer fits. */
    text_area.AreaType = 0;
    text_area.AreaX = 0;
    text_area.AreaY = 0;
    text_area.AreaWidth = 96;
    text_area.AreaHeight = 32;
    zelDual_program_AddArea(1, &text_area);
    memset(&text_style, 0, sizeof text_style);
    text_style.displayEffect = 1;
    text_style.arrMode = 1;   /* several lines, broken into pages */
    text_style.fontSize = 9; /* points: 12 pixels */
    text_style.fontColor = 3; /* yellow */
    text_style.horizontalAlign = 1;
    text_style.verticalAlign = 1;
    r = zelDual_program_fontPath_picturesAreaAddTxt(
        1, "Car park\nLevel 2\n14 free\nExit left", kFont, &text_style);
    if (r != 0) return fail("picturesAreaAddTxt", r);

    /* A picture area of 32 x 32 at the right, with a frame of 2 pixels. */
    if (make_pictures() != 0) return fail("writing the demo pictures", -1);
    picture_area.AreaType = 0;
    picture_area.AreaX = 96;
    picture_area.AreaY = 0;
    picture_area.AreaWidth = 32;
    picture_area.AreaHeight = 32;
    zelDual_program_AddArea(2, &picture_area);
    memset(&picture_page, 0, sizeof picture_page);
    picture_page.displayEffect = 1;
    /* The path is kept, not copied: a string literal lives long enough. */
    r = zelDual_program_pictureAreaAddPic(2, 0, &picture_page, "demo-picture.png");
    if (r != 0) return fail("pictureAreaAddPic", r);
    memset(&frame, 0, sizeof frame);
    frame.frameMark = 1;
    frame.frameParam1 = 1; /* the frame's settings are the controller's */
    /* The frame takes 2 pixels on every side and breaks the area's text again: this area has
     * none, which the library reports as "Error:no string has been added." */
    r = zelDual_program_picturesAreaAddFrame(2, &frame, "demo-frame.png");
    if (r != 0) return fail("picturesAreaAddFrame", r);

    /* A digital clock of 96 x 32 under the text: the date on one row, the time on the next.
     * The controller keeps it running; the library renders the separators and the glyphs of
     * the digits once, now, in the clock's font and size. */
    clock_area.AreaType = 2;
    clock_area.AreaX = 0;
    clock_area.AreaY = 32;
    clock_area.AreaWidth = 96;
    clock_area.AreaHeight = 32;
    zelDual_program_AddArea(3, &clock_area);
    memset(&clock, 0, sizeof clock);
    clock.arrMode = 1;          /* a row per field */
    clock.fontColor = 2;        /* green */
    clock.fontName = kFont;     /* a font file: the fontPath entry below */
    clock.fontSize = 9;         /* 12 pixels */
    clock.horizontalAlign = 1;  /* centred */
    clock.dateEnable = 1;
    clock.dateFormat = 0;       /* 2026-11-15 */
    clock.timeEnable = 1;
    clock.timeFormat = 0;       /* 13:45:30 */
    r = zelDual_program_fontPath_timeAreaAddContent(3, &clock);
    if (r != 0) return fail("fontPath_timeAreaAddContent", r);

    /* An analog clock of 32 x 32 beside it: a circle and twelve strokes; the controller draws
     * the hands, whose colours are codes on this screen. */
    dial_area.AreaType = 2;
    dial_area.AreaX = 96;
    dial_area.AreaY = 32;
    dial_area.AreaWidth = 32;
    dial_area.AreaHeight = 32;
    zelDual_program_AddArea(4, &dial_area);
    memset(&hands, 0, sizeof hands);
    hands.hourHandLength = 8;
    hands.hourHandColor = 1;    /* red */
    hands.minuteHandLength = 12;
    hands.minuteHandColor = 3;  /* yellow */
    hands.secondHandLength = 14;
    hands.secondHandColor = 2;  /* green */
    dial_colors.hourMarkColor = 3;
    dial_colors.minuteMarkColor = 2;
    dial_colors.circleColor = 1;
    r = zelDual_program_timeAreaAddAnalogClock(4, &hands, 2, &dial_colors);
    if (r != 0) return fail("timeAreaAddAnalogClock", r);

    /* 4. One file image, closed by its CRC-32. */
    memset(&file, 0, sizeof file);
    r = zelDual_program_IntegrateProgramFile(&file);
    if (r != 0) return fail("IntegrateProgramFile", r);
    memcpy(name, file.fileName, 4);
    printf("demo: program %s, %u bytes, CRC-32 0x%08X\n", name, (unsigned)file.fileLen,
           (unsigned)file.fileCrc);

    /* 5. Into the controller's file system, overwriting a file of that name. */
    r = zelDual_cmd_ofsWriteFile(address, port, file.fileName, file.fileType, file.fileLen, 1,
                                 file.fileData);
    zelDual_program_freeBuffer(&file); /* 6. */
    if (r != 0) return fail("ofsWriteFile", r);
    printf("demo: %s written\n", name);

    zelDual_program_deleteProgram();
    zelDual_ReleaseSdk();
    if (panel_dir != NULL) list_panel_pictures(panel_dir, name);
    return 0;
}
