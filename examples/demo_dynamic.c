/*
 * The road of a dynamic area, as a host application walks it: a counter that changes once a
 * second, pushed to the controller without any program file.
 *
 *   1. start the library;
 *   2. every second, add (or replace) area 1 with the counter's text: the call pings the
 *      controller, sets the screen for its type, renders the text and sends the pages;
 *   3. stop the library. The area stays on the controller until it is deleted (a G5 and a G6
 *      controller share the delete command; this demo leaves it shown).
 *
 * A G5 area goes with zelDual_dynamicArea_AddAreaWithTxt_5G, whose head byte 0 carries the area
 * number; a G6 area with zelDual_dynamicArea_AddAreaTxt_6G, whose port must be 1024 or above.
 * Over a serial line the _Serial forms take a port name and a speed index (1: 9600, 2: 57600).
 *
 * Usage: zel_demo_dynamic ADDRESS PORT PANEL_DIR g5|g6 [SECONDS]
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "zel_sdk_dual.h"

static const char *const kFont = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
enum { kArea = 1, kX = 0, kY = 0, kWidth = 64, kHeight = 32 };

static void sleep_one_second(void) {
    struct timespec t = {1, 0};
    nanosleep(&t, NULL);
}

static int32_t push_g5(const char *address, uint16_t port, const char *text) {
    ZelFrameHeader_G5 no_frame;
    ZelTextStyleRecord style;
    memset(&no_frame, 0, sizeof no_frame);
    memset(&style, 0, sizeof style);
    style.arrMode = 0; /* one line */
    style.fontSize = 16;
    style.fontColor = 1; /* red */
    style.horizontalAlign = 1;
    style.verticalAlign = 1;
    /* head byte 0: the area number; head word 5; list flag 1 (no program list); effect 1 */
    return zelDual_dynamicArea_AddAreaWithTxt_5G(address, port, ZEL_SCREEN_TWO_COLORS, kArea, 0, 5,
                                                 1, 0, NULL, 0, kX, kY, kWidth, kHeight, no_frame,
                                                 1, 1, 1, 300, 1, style, kFont, text);
}

static int32_t push_g6(const char *address, uint16_t port, const char *text) {
    return zelDual_dynamicArea_AddAreaTxt_6G(address, port, ZEL_SCREEN_TWO_COLORS, kArea, kX, kY,
                                             kWidth, kHeight, kFont, 16, text);
}

int main(int argc, char **argv) {
    const char *address = argc > 1 ? argv[1] : "127.0.0.1";
    const uint16_t port = (uint16_t)(argc > 2 ? atoi(argv[2]) : 5005);
    const char *panel_dir = argc > 3 ? argv[3] : NULL;
    const int g6 = argc > 4 && strcmp(argv[4], "g6") == 0;
    const int seconds = argc > 5 ? atoi(argv[5]) : 4;
    int i;

    zelDual_InitSdk();
    for (i = 1; i <= seconds; ++i) {
        char text[16];
        int32_t r;
        snprintf(text, sizeof text, "%d", i);
        r = g6 ? push_g6(address, port, text) : push_g5(address, port, text);
        if (r != 0) {
            printf("demo_dynamic: pushing %s failed with %d (see testDemoLog)\n", text, (int)r);
            zelDual_ReleaseSdk();
            return 1;
        }
        printf("demo_dynamic: area %d shows %s\n", kArea, text);
        if (i < seconds) sleep_one_second();
    }
    zelDual_ReleaseSdk();
    if (panel_dir != NULL) printf("demo_dynamic: the panel is in %s/live-panel.png\n", panel_dir);
    return 0;
}
