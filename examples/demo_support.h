/* What both demos need besides the library. */
#ifndef ZEL_DEMO_SUPPORT_H
#define ZEL_DEMO_SUPPORT_H

#include <stdint.h>

/* Writes `width` x `height` RGB pixels (3 bytes each, rows from the top) as a PNG: 0, or -1. */
int write_png(const char *path, int width, int height, const uint8_t *rgb);

/* Names, in order, the files of `dir` that start with the program's file name `name`. */
void list_panel_pictures(const char *dir, const char *name);

#endif
