/* What both demos need besides the library: a small PNG writer for the pictures they make, and a
 * listing of the pictures the simulator made of a program. */
#include "demo_support.h"

#include <dirent.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "zel_sdk_dual.h"

/* ---- A PNG writer in a few lines: stored (uncompressed) deflate blocks ---- */

static void put32(FILE *f, uint32_t v) {
    fputc((int)(v >> 24), f);
    fputc((int)(v >> 16) & 0xFF, f);
    fputc((int)(v >> 8) & 0xFF, f);
    fputc((int)v & 0xFF, f);
}

/* One chunk: length, type, data, CRC-32 of type and data (the library computes it). */
static void put_chunk(FILE *f, const char *type, const uint8_t *data, uint32_t length) {
    uint8_t *both = malloc(4 + (size_t)length);
    ZelCrc32Record crc;
    memcpy(both, type, 4);
    if (length > 0) memcpy(both + 4, data, length);
    crc.data = both;
    crc.length = 4 + length;
    zelDual_get_crc32(&crc);
    put32(f, length);
    fwrite(both, 1, 4 + (size_t)length, f);
    put32(f, crc.crc);
    free(both);
}

/* Writes `width` x `height` RGB pixels (3 bytes each, rows from the top) as a PNG. */
int write_png(const char *path, int width, int height, const uint8_t *rgb) {
    static const uint8_t signature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    const size_t row = 1 + 3 * (size_t)width; /* filter byte 0, then the pixels */
    const size_t raw_len = row * (size_t)height;
    const size_t blocks = raw_len / 65535 + 1;
    uint8_t *raw = malloc(raw_len), *z = malloc(2 + raw_len + 5 * blocks + 4), *p;
    uint8_t ihdr[13];
    uint32_t a = 1, b = 0;
    size_t i, done;
    FILE *f = fopen(path, "wb");
    if (f == NULL || raw == NULL || z == NULL) {
        if (f != NULL) fclose(f);
        free(raw);
        free(z);
        return -1;
    }
    for (i = 0; i < (size_t)height; ++i) {
        raw[i * row] = 0;
        memcpy(raw + i * row + 1, rgb + i * 3 * (size_t)width, 3 * (size_t)width);
    }
    p = z;
    *p++ = 0x78; /* zlib header: deflate, no preset dictionary */
    *p++ = 0x01;
    for (done = 0; done < raw_len || done == 0;) {
        const size_t n = raw_len - done > 65535 ? 65535 : raw_len - done;
        *p++ = done + n == raw_len ? 1 : 0; /* last block? stored */
        *p++ = (uint8_t)(n & 0xFF);
        *p++ = (uint8_t)(n >> 8);
        *p++ = (uint8_t)(~n & 0xFF);
        *p++ = (uint8_t)((~n >> 8) & 0xFF);
        memcpy(p, raw + done, n);
        p += n;
        done += n;
        if (n == 0) break;
    }
    for (i = 0; i < raw_len; ++i) { /* Adler-32 of the raw rows */
        a = (a + raw[i]) % 65521;
        b = (b + a) % 65521;
    }
    *p++ = (uint8_t)(b >> 8);
    *p++ = (uint8_t)b;
    *p++ = (uint8_t)(a >> 8);
    *p++ = (uint8_t)a;

    ihdr[0] = (uint8_t)(width >> 24); ihdr[1] = (uint8_t)(width >> 16);
    ihdr[2] = (uint8_t)(width >> 8);  ihdr[3] = (uint8_t)width;
    ihdr[4] = (uint8_t)(height >> 24); ihdr[5] = (uint8_t)(height >> 16);
    ihdr[6] = (uint8_t)(height >> 8);  ihdr[7] = (uint8_t)height;
    ihdr[8] = 8;  /* bits per sample */
    ihdr[9] = 2;  /* RGB */
    ihdr[10] = 0; ihdr[11] = 0; ihdr[12] = 0;
    fwrite(signature, 1, sizeof signature, f);
    put_chunk(f, "IHDR", ihdr, sizeof ihdr);
    put_chunk(f, "IDAT", z, (uint32_t)(p - z));
    put_chunk(f, "IEND", NULL, 0);
    fclose(f);
    free(raw);
    free(z);
    return 0;
}

static int by_name(const void *a, const void *b) {
    return strcmp(*(const char *const *)a, *(const char *const *)b);
}

/* Names, in order, the files of `dir` that start with the program's file name. */
void list_panel_pictures(const char *dir, const char *name) {
    char *names[256];
    size_t count = 0, i;
    struct dirent *entry;
    DIR *d = opendir(dir);
    if (d == NULL) {
        printf("demo: no panel folder %s\n", dir);
        return;
    }
    while ((entry = readdir(d)) != NULL && count < 256) {
        if (strncmp(entry->d_name, name, 4) == 0) names[count++] = strdup(entry->d_name);
    }
    closedir(d);
    qsort(names, count, sizeof names[0], by_name);
    printf("demo: the simulator shows the program in %s:\n", dir);
    for (i = 0; i < count; ++i) {
        printf("  %s\n", names[i]);
        free(names[i]);
    }
}

