/**
 * @file
 * zel_sdk_dual: drives the controllers of G5 and G6 LED display panels.
 *
 * One C header for C and C++ hosts. Every function returns a 32-bit signed result unless its
 * line says otherwise:
 *    0  success
 *    1  the answer's data was longer than the caller's buffer; the buffer holds what fitted
 *    2  zelDual_cmd_AT_getWifiSsidPwd: the module's answer was too short
 *   >0  otherwise an error code reported by the controller or by the socket layer
 *   -1  generic failure: transport failure or time-out, bad frame, bad argument
 *   -2  the answer's header check failed
 *   -3  the CRC-16 over the answer's body failed
 *   -4  the answer's header version is unknown
 *   -5  an answer arrived, well formed, but not the one expected
 *
 * Text is a zero-terminated GBK byte string. Records are packed little-endian byte blocks in
 * which pointers take 8 bytes (x86-64). The library keeps no context handle: screen settings,
 * the packet length and the program under construction are process-wide. What the library
 * reports to a person goes to standard output (the console trace) and, for dynamic areas, to
 * the file "testDemoLog" in the working directory.
 */
#ifndef ZEL_SDK_DUAL_H
#define ZEL_SDK_DUAL_H

#include <stddef.h>
#include <stdint.h>

#if defined(ZEL_SDK_DUAL_BUILD)
#define ZEL_API __attribute__((visibility("default")))
#else
#define ZEL_API
#endif

#ifdef __cplusplus
#define ZEL_STATIC_ASSERT(cond, msg) static_assert(cond, msg)
extern "C" {
#else
#define ZEL_STATIC_ASSERT(cond, msg) _Static_assert(cond, msg)
#endif

#pragma pack(push, 1)

/* ==== Records of the SDK frame ========================================================== */

/** Data range and result of zelDual_get_crc16. */
typedef struct ZelCrc16Record {
    const uint8_t *data; /**< offset 0 */
    uint32_t length;     /**< offset 8 */
    uint16_t crc;        /**< offset 12: written by the call */
} ZelCrc16Record;
ZEL_STATIC_ASSERT(sizeof(ZelCrc16Record) == 14, "ZelCrc16Record is 14 bytes");

/** Data range and result of zelDual_get_crc32. */
typedef struct ZelCrc32Record {
    const uint8_t *data; /**< offset 0 */
    uint32_t length;     /**< offset 8 */
    uint32_t crc;        /**< offset 12: written by the call */
} ZelCrc32Record;
ZEL_STATIC_ASSERT(sizeof(ZelCrc32Record) == 16, "ZelCrc32Record is 16 bytes");

/** The G5 program file image that zelDual_program_IntegrateProgramFile hands out. */
typedef struct ZelProgramFile_G5 {
    char fileName[4];   /**< offset 0: ASCII, not terminated */
    uint8_t fileType;   /**< offset 4 */
    uint32_t fileLen;   /**< offset 5 */
    uint8_t *fileData;  /**< offset 9: owned by the host until zelDual_program_freeBuffer */
    uint32_t fileCrc;   /**< offset 17: the CRC-32 at the end of the image */
} ZelProgramFile_G5;
ZEL_STATIC_ASSERT(sizeof(ZelProgramFile_G5) == 21, "ZelProgramFile_G5 is 21 bytes");

/** The two G6 file images that zelDual_program_IntegrateProgramFile_G6 hands out. */
typedef struct ZelProgramFile_G6 {
    char programFileName[4]; /**< offset 0 */
    uint8_t programFileType; /**< offset 4 */
    uint32_t programFileLen; /**< offset 5 */
    uint8_t *programFileData; /**< offset 9: the host's until zelDual_program_freeBuffer_G6 */
    char dataFileName[4];    /**< offset 17 */
    uint8_t dataFileType;    /**< offset 21 */
    uint32_t dataFileLen;    /**< offset 22 */
    uint8_t *dataFileData;   /**< offset 26: the host's until zelDual_program_freeBuffer_G6 */
} ZelProgramFile_G6;
ZEL_STATIC_ASSERT(sizeof(ZelProgramFile_G6) == 34, "ZelProgramFile_G6 is 34 bytes");

/* ==== Records of discovery and network configuration ==================================== */

/** A controller's answer to ping, as the ping and search entries hand it on. */
typedef struct ZelPingRecord {
    uint16_t ControllerType;    /**< offset 0: the controller type code (see the screen settings) */
    uint8_t controllerData[30]; /**< offset 2: controller-defined, passed on unexamined */
    char address[20];           /**< offset 32: the address as dotted text, zero-padded */
} ZelPingRecord;
ZEL_STATIC_ASSERT(sizeof(ZelPingRecord) == 52, "ZelPingRecord is 52 bytes");


/* ==== Records of device control and the file system ===================================== */

/** A directory listing of the controller's ordinary file space (zelDual_cmd_ofsReedDirBlock). */
typedef struct ZelDirectoryRecord {
    uint8_t kindFilter; /**< offset 0: set by the host before the listing */
    uint16_t count;     /**< offset 1: number of entries, written by the listing */
    uint8_t *entries;   /**< offset 3: count entries of 13 bytes, allocated by the listing; the
                           host hands it back through zelDual_cmd_ofs_freeDirBlock */
} ZelDirectoryRecord;
ZEL_STATIC_ASSERT(sizeof(ZelDirectoryRecord) == 11, "ZelDirectoryRecord is 11 bytes");


/* ==== Records of screen settings and rendering ========================================== */

/** Colour class of the screen, passed by value (32 bits). Values outside 1 to 4 are stored as
 *  they come and encode to nothing. */
#ifdef __cplusplus
typedef enum E_ScreenColor_G56 : int32_t {
#else
typedef enum E_ScreenColor_G56 {
#endif
    ZEL_SCREEN_ONE_COLOR = 1,    /**< one LED colour: one bit plane */
    ZEL_SCREEN_TWO_COLORS = 2,   /**< two LED colours: two bit planes */
    ZEL_SCREEN_THREE_COLORS = 3, /**< three LED colours: three bit planes */
    ZEL_SCREEN_FULL_COLOR = 4    /**< full colour: 16-bit or 24-bit pixels */
} E_ScreenColor_G56;
ZEL_STATIC_ASSERT(sizeof(E_ScreenColor_G56) == 4, "E_ScreenColor_G56 is 32 bits");


/* ==== Records of text pages ============================================================= */

/** Page header and text style of the G5 text and picture entries (29 bytes). A picture reads
 *  only the first nine bytes. The entries zero the four reserved header bytes themselves. */
typedef struct TextPageParams_G5 {
    uint8_t pageByte0;       /**< offset 0: for the controller */
    uint8_t displayEffect;   /**< offset 1: 4 and 38 roll a single line, 6 and 40 a column */
    uint8_t pageByte2;       /**< offset 2: for the controller */
    uint8_t pageByte3;       /**< offset 3: for the controller */
    uint16_t pageWord4;      /**< offset 4: for the controller */
    uint8_t pageByte6;       /**< offset 6: for the controller */
    uint16_t pageWidth;      /**< offset 7: replaced by the page width when the file is built */
    uint32_t arrMode;        /**< offset 9: 0 single line, 1 multi-line; others count as 1 */
    uint16_t fontSize;       /**< offset 13: points; drawn at round(size * 4 / 3) pixels */
    uint32_t fontColor;      /**< offset 15: 0 to 7 a colour code (bit 0 red, 1 green, 2 blue),
                                otherwise 0x00RRGGBB */
    uint8_t fontBold;        /**< offset 19: non-zero for bold */
    uint8_t fontItalic;      /**< offset 20: non-zero for italic */
    uint32_t styleWord12;    /**< offset 21: carried, not drawn with */
    uint16_t styleWord16;    /**< offset 25: carried, not drawn with */
    uint8_t horizontalAlign; /**< offset 27: 0 to 3 */
    uint8_t verticalAlign;   /**< offset 28: 0 to 3 */
} TextPageParams_G5;
ZEL_STATIC_ASSERT(sizeof(TextPageParams_G5) == 29, "TextPageParams_G5 is 29 bytes");

/** One page of an area as a PNG, for a host's preview. */
typedef struct OnePageResult {
    uint16_t pageCount;     /**< offset 0 */
    uint32_t pngLength;     /**< offset 2: bytes at pngData */
    const uint8_t *pngData; /**< offset 6: owned by the area, valid until its next preview */
} OnePageResult;
ZEL_STATIC_ASSERT(sizeof(OnePageResult) == 14, "OnePageResult is 14 bytes");

/** Page header and text style of the G6 text and picture entries (31 bytes): the G5 record's
 *  page header with one byte more for the controller, a byte not read, and the G5 style. A
 *  picture or background reads only the first ten bytes. */
typedef struct TextPageParams_G6 {
    uint8_t pageByte0;       /**< offset 0: for the controller */
    uint8_t displayEffect;   /**< offset 1: 4 and 38 roll a single line, 6 and 40 a column */
    uint8_t pageByte2;       /**< offset 2: for the controller */
    uint8_t pageByte3;       /**< offset 3: for the controller */
    uint16_t pageWord4;      /**< offset 4: for the controller */
    uint8_t pageByte6;       /**< offset 6: for the controller */
    uint16_t pageWidth;      /**< offset 7: replaced by the page width when the file is built */
    uint8_t pageByte10;      /**< offset 9: for the controller (byte 10 of the page header) */
    uint8_t unused10;        /**< offset 10: not read */
    uint32_t arrMode;        /**< offset 11: 0 single line, 1 multi-line; others count as 1 */
    uint16_t fontSize;       /**< offset 15: points; drawn at round(size * 4 / 3) pixels */
    uint32_t fontColor;      /**< offset 17: 0 to 7 a colour code, otherwise 0x00RRGGBB */
    uint8_t fontBold;        /**< offset 21: non-zero for bold */
    uint8_t fontItalic;      /**< offset 22: non-zero for italic */
    uint32_t styleWord12;    /**< offset 23: carried, not drawn with */
    uint16_t styleWord16;    /**< offset 27: carried, not drawn with */
    uint8_t horizontalAlign; /**< offset 29: 0 to 3 */
    uint8_t verticalAlign;   /**< offset 30: 0 to 3 */
} TextPageParams_G6;
ZEL_STATIC_ASSERT(sizeof(TextPageParams_G6) == 31, "TextPageParams_G6 is 31 bytes");


/* ==== Records of G5 programs ============================================================ */

/** The 19-byte header of a G5 program (zelDual_program_addProgram). The library reads only
 *  ProgramName and PlayPeriodFlag; the other fields go to the controller as they are. */
typedef struct ZelProgramHeader_G5 {
    uint8_t FileType;            /**< offset 0: file type byte of the program file */
    uint32_t ProgramName;        /**< offset 1: in: the program number; out: the four ASCII
                                    characters of the file name ("P007", "1234", "-100") */
    uint8_t ProgramStyle;        /**< offset 5 */
    uint8_t PlayPeriodFlag;      /**< offset 6: set by zelDual_program_addPlayPeriodGrp */
    uint8_t ProgramPlayTimes;    /**< offset 7 */
    uint16_t ProgramTimeSpan;    /**< offset 8 */
    uint8_t ProgramWeek;         /**< offset 10: bit mask of days */
    uint16_t ProgramLifeSpan_sy; /**< offset 11: start year */
    uint8_t ProgramLifeSpan_sm;  /**< offset 13 */
    uint8_t ProgramLifeSpan_sd;  /**< offset 14 */
    uint16_t ProgramLifeSpan_ey; /**< offset 15: end year */
    uint8_t ProgramLifeSpan_em;  /**< offset 17 */
    uint8_t ProgramLifeSpan_ed;  /**< offset 18 */
} ZelProgramHeader_G5;
ZEL_STATIC_ASSERT(sizeof(ZelProgramHeader_G5) == 19, "ZelProgramHeader_G5 is 19 bytes");

/** Where an area stands on the screen and what it holds (zelDual_program_AddArea). */
typedef struct ZelAreaRecord_G5 {
    uint8_t AreaType;    /**< offset 0: 0 text and pictures, 2 clock */
    uint16_t AreaX;      /**< offset 1: left edge, pixels */
    uint16_t AreaY;      /**< offset 3: top edge, pixels */
    uint16_t AreaWidth;  /**< offset 5 */
    uint16_t AreaHeight; /**< offset 7 */
} ZelAreaRecord_G5;
ZEL_STATIC_ASSERT(sizeof(ZelAreaRecord_G5) == 9, "ZelAreaRecord_G5 is 9 bytes");

/** Up to eight play periods of 6 bytes, for the controller (zelDual_program_addPlayPeriodGrp).
 *  The file carries the first `count` periods but not the count. */
typedef struct ZelPlayPeriods_G5 {
    uint8_t count;          /**< offset 0: periods in use, at most 8; 0 switches them off */
    uint8_t periods[8][6];  /**< offset 1 */
} ZelPlayPeriods_G5;
ZEL_STATIC_ASSERT(sizeof(ZelPlayPeriods_G5) == 49, "ZelPlayPeriods_G5 is 49 bytes");

/** Settings of an area frame or a program frame, for the controller. The frame's thickness is
 *  the height of its PNG strip and nothing else. */
typedef struct ZelFrameHeader_G5 {
    uint8_t frameMark;    /**< offset 0: an area frame always writes 1; a program frame writes
                             this byte as it is, 0 included */
    uint8_t frameParam1;  /**< offset 1 */
    uint8_t frameParam2;  /**< offset 2 */
    uint8_t frameParam3;  /**< offset 3 */
    uint8_t frameParam4;  /**< offset 4 */
    uint16_t frameParam5; /**< offset 5 */
} ZelFrameHeader_G5;
ZEL_STATIC_ASSERT(sizeof(ZelFrameHeader_G5) == 7, "ZelFrameHeader_G5 is 7 bytes");

/* ==== Records of G6 programs ============================================================ */

/** The 29-byte header of a G6 program (zelDual_program_addProgram_G6). The library reads only
 *  ProgramName; the other fields go to the controller as they are. Play periods
 *  (zelDual_program_addPlayPeriodGrp_G6) do not touch this header: set TimeAttributeNum and
 *  TimeAttribute0Offset yourself. */
typedef struct ZelProgramHeader_G6 {
    uint8_t FileType;              /**< offset 0: file type byte of the program file */
    uint32_t ProgramName;          /**< offset 1: the program number; the file carries the four
                                      characters of its name here, as for G5 */
    uint8_t ProgramStyle;          /**< offset 5 */
    uint8_t ProgramPriority;       /**< offset 6 */
    uint8_t ProgramPlayTimes;      /**< offset 7 */
    uint16_t ProgramTimeSpan;      /**< offset 8 */
    uint8_t SpecialFlag;           /**< offset 10 */
    uint8_t CommExtendParaLen;     /**< offset 11 */
    uint16_t ScheduNum;            /**< offset 12 */
    uint16_t LoopValue;            /**< offset 14 */
    uint8_t Intergrate;            /**< offset 16: carried; a G6 program is always two files */
    uint8_t TimeAttributeNum;      /**< offset 17 */
    uint16_t TimeAttribute0Offset; /**< offset 18 */
    uint8_t ProgramWeek;           /**< offset 20: bit mask of days */
    uint16_t ProgramLifeSpan_sy;   /**< offset 21: start year */
    uint8_t ProgramLifeSpan_sm;    /**< offset 23 */
    uint8_t ProgramLifeSpan_sd;    /**< offset 24 */
    uint16_t ProgramLifeSpan_ey;   /**< offset 25: end year */
    uint8_t ProgramLifeSpan_em;    /**< offset 27 */
    uint8_t ProgramLifeSpan_ed;    /**< offset 28 */
} ZelProgramHeader_G6;
ZEL_STATIC_ASSERT(sizeof(ZelProgramHeader_G6) == 29, "ZelProgramHeader_G6 is 29 bytes");

/** Where a G6 area stands and what it holds (zelDual_program_addArea_G6): the G5 record and
 *  three bytes for the controller, carried unread. */
typedef struct ZelAreaRecord_G6 {
    uint8_t AreaType;       /**< offset 0: 0 text and pictures, 2 clock, 11 background */
    uint16_t AreaX;         /**< offset 1: left edge, pixels */
    uint16_t AreaY;         /**< offset 3: top edge, pixels */
    uint16_t AreaWidth;     /**< offset 5 */
    uint16_t AreaHeight;    /**< offset 7 */
    uint8_t BackGroundFlag; /**< offset 9 */
    uint8_t Transparency;   /**< offset 10 */
    uint8_t AreaEqual;      /**< offset 11 */
} ZelAreaRecord_G6;
ZEL_STATIC_ASSERT(sizeof(ZelAreaRecord_G6) == 12, "ZelAreaRecord_G6 is 12 bytes");

/** The settings of a G6 area frame or program frame, for the controller. The library writes
 *  them behind a mark 1 and before seven zero bytes. */
typedef struct ZelFrameParams_G6 {
    uint8_t frameParam1;    /**< offset 0 */
    uint8_t frameParam2;    /**< offset 1 */
    uint8_t frameParam3[3]; /**< offset 2 */
    uint8_t frameParam4;    /**< offset 5 */
} ZelFrameParams_G6;
ZEL_STATIC_ASSERT(sizeof(ZelFrameParams_G6) == 6, "ZelFrameParams_G6 is 6 bytes");

/** The sound settings of a G6 area (zelDual_program_pictureAreaEnableSound_G6), for the
 *  controller; the file carries them behind a byte 1. */
typedef struct ZelSoundParams_G6 {
    uint8_t soundSettings1[4]; /**< offset 0 */
    uint32_t soundValue1;      /**< offset 4 */
    uint32_t soundValue2;      /**< offset 8 */
    uint8_t soundSettings2[4]; /**< offset 12 */
} ZelSoundParams_G6;
ZEL_STATIC_ASSERT(sizeof(ZelSoundParams_G6) == 16, "ZelSoundParams_G6 is 16 bytes");

/** The battle time of a G6 clock area (zelDual_program_timeAreaSetBattleTime_G6), for the
 *  controller; the library stores and writes it and reads nothing of it. */
typedef struct ZelBattleTime_G6 {
    uint16_t battleWord;    /**< offset 0 */
    uint8_t battleBytes[7]; /**< offset 2 */
} ZelBattleTime_G6;
ZEL_STATIC_ASSERT(sizeof(ZelBattleTime_G6) == 9, "ZelBattleTime_G6 is 9 bytes");

/* ==== Records of clock areas ============================================================ */

/** A digital clock's content (zelDual_program_timeAreaAddContent and its kin), 37 bytes. The
 *  three formats stand unaligned after offset 21: fill the record field by field. */
typedef struct TimeContentRecord {
    uint32_t arrMode;        /**< offset 0: 1 date, week day and time each on a row of its own;
                                0 all on one line */
    uint32_t fontColor;      /**< offset 4: 0 to 7 a colour code (bit 0 red, 1 green, 2 blue),
                                otherwise 0x00RRGGBB */
    const char *fontName;    /**< offset 8: GBK font family name, or font file path in the
                                fontPath entries; read during the call only */
    uint16_t fontSize;       /**< offset 16: points; drawn at round(size * 4 / 3) pixels */
    uint8_t reserved[3];     /**< offset 18: not read */
    uint8_t horizontalAlign; /**< offset 21: 0 left, 1 centre, 2 right */
    uint8_t dateEnable;      /**< offset 22: non-zero shows the date */
    uint32_t dateFormat;     /**< offset 23: 0 2026-11-15, 1 2026/11/15, 2 15-11-2026,
                                3 15/11/2026, 4 11-15, 5 11/15, 6 month and day with the
                                Chinese signs, 7 year, month and day with the Chinese signs */
    uint8_t timeEnable;      /**< offset 27: non-zero shows the time of day */
    uint32_t timeFormat;     /**< offset 28: 0 13:45:30, 1 the same with the Chinese signs,
                                2 13:45, 3 the same with the Chinese signs, 4 PM 01:45,
                                5 01:45 PM */
    uint8_t weekEnable;      /**< offset 32: non-zero shows the week day */
    uint32_t weekFormat;     /**< offset 33: 1 Monday, 2 Mon, 3 in Chinese */
} TimeContentRecord;
ZEL_STATIC_ASSERT(sizeof(TimeContentRecord) == 37, "TimeContentRecord is 37 bytes");

/** The hands of an analog clock, which the controller draws (23 bytes). The library reads only
 *  the hour and minute lengths, for the preview. A G5 program keeps one byte of each colour:
 *  give colour codes (0 to 7). */
typedef struct AnalogClockRecord {
    uint16_t clockParam1;      /**< offset 0: for the controller */
    uint16_t clockParam2;      /**< offset 2: for the controller */
    uint8_t clockParam3;       /**< offset 4: for the controller */
    uint8_t hourHandParam;     /**< offset 5: for the controller */
    uint8_t hourHandLength;    /**< offset 6: pixels */
    uint32_t hourHandColor;    /**< offset 7 */
    uint8_t minuteHandParam;   /**< offset 11: for the controller */
    uint8_t minuteHandLength;  /**< offset 12: pixels */
    uint32_t minuteHandColor;  /**< offset 13 */
    uint8_t secondHandParam;   /**< offset 17: for the controller */
    uint8_t secondHandLength;  /**< offset 18: for the controller */
    uint32_t secondHandColor;  /**< offset 19 */
} AnalogClockRecord;
ZEL_STATIC_ASSERT(sizeof(AnalogClockRecord) == 23, "AnalogClockRecord is 23 bytes");

/** Colours of a painted dial (12 bytes), each a colour code or 0x00RRGGBB. */
typedef struct ZelDialMarkColors {
    uint32_t hourMarkColor;   /**< offset 0: the marks at 3, 6, 9 and 12 */
    uint32_t minuteMarkColor; /**< offset 4: the eight other marks */
    uint32_t circleColor;     /**< offset 8: the circle of dial style 2 */
} ZelDialMarkColors;
ZEL_STATIC_ASSERT(sizeof(ZelDialMarkColors) == 12, "ZelDialMarkColors is 12 bytes");

#pragma pack(pop)

/* ==== SDK frame ========================================================================= */

/** Prints the version line; starts the library. 0, or -1 if the socket layer did not start. */
ZEL_API int32_t zelDual_InitSdk(void);
/** Stops the library. 0 (also when it was not started). */
ZEL_API int32_t zelDual_ReleaseSdk(void);
/** Sets the screen number of the next packet; any command's peer resets it to 0xFFFE. 0. */
ZEL_API int32_t zelDual_set_screenNum_G56(uint16_t screenNum);
/** Sets the block size of zelDual_cmd_ofsWriteFile; not checked. 0. */
ZEL_API int32_t zelDual_set_packetLen(uint16_t packetLen);
/** Computes the CRC-16/ARC of the record's range into its crc field. 0. */
ZEL_API int32_t zelDual_get_crc16(ZelCrc16Record *record);
/** Computes the CRC-32 (IEEE 802.3) of the record's range into its crc field. 0. */
ZEL_API int32_t zelDual_get_crc32(ZelCrc32Record *record);
/** Frees the image of a G5 file record and nulls its pointer; null is skipped. 0. */
ZEL_API int32_t zelDual_program_freeBuffer(ZelProgramFile_G5 *file);
/** Frees the data file, then the program file, of a G6 record; nulls both. 0. */
ZEL_API int32_t zelDual_program_freeBuffer_G6(ZelProgramFile_G6 *file);
/** Destroys the program under construction and releases its owner thread. 0. */
ZEL_API int32_t zelDual_program_deleteProgram(void);
/** The same as zelDual_program_deleteProgram. 0. */
ZEL_API int32_t zelDual_program_deleteProgram_G6(void);


/* ==== Character conversion ============================================================== */

/** Converts the zero-terminated GBK text `in` to UTF-8 in `out`, without a terminating zero.
 *  `outSize` is not looked at: `out` must hold 3 bytes per input byte. Returns the number of
 *  bytes written; an invalid sequence ends the conversion (what came before it is written). */
ZEL_API int32_t GB2312ToUTF8(const char *in, char *out, size_t outSize);
/** Converts UCS-2LE text to UTF-8 in `out`, without a terminating zero. The input ends at its
 *  first zero BYTE (so "A" as 0x41 0x00 is one odd byte and converts to nothing); use
 *  UnicodeToUTF8_V2 for text with zero bytes. `outSize` is not looked at: `out` must hold
 *  3 bytes per 2 input bytes. Returns the number of bytes written. */
ZEL_API int32_t UnicodeToUTF8(const char *in, char *out, size_t outSize);
/** Converts *inLeft bytes of UCS-2LE at `in` to UTF-8 at `out`, iconv-style: first clears as
 *  many bytes of `out` as the low byte of *outLeft says (0 to 127; 128 and more clear nothing),
 *  then converts; both counters are decreased by what was consumed and produced. Returns
 *  iconv's result: the number of irreversible conversions, or (size_t)-1 on a bad sequence,
 *  a full `out` or a null pointer. */
ZEL_API size_t UnicodeToUTF8_V2(const char *in, size_t *inLeft, char *out, size_t *outLeft);


/* ==== Discovery and network configuration =============================================== */

/**
 * Looks for a controller three ways, up to three times: a Wi-Fi module answering on UDP 13769,
 * the module's access point at 192.168.100.1, and a broadcast on UDP 5007. On success the
 * record holds the ping answer with the address of the controller that answered. 0, or the
 * last way's failure.
 */
ZEL_API int32_t zelDual_cmd_searchController(ZelPingRecord *pingRecord);
/** Pings the controller at pIP:nPort (TCP) into the record (written only on success). */
ZEL_API int32_t zelDual_cmd_tcpPing(const char *pIP, uint16_t nPort, ZelPingRecord *pingRecord);
/**
 * Pings by UDP broadcast; the record is zeroed first and its address field names whoever
 * answered (empty if nobody did).
 */
ZEL_API int32_t zelDual_cmd_udpPing(ZelPingRecord *pingRecord);
/** Pings over the serial port at 9600, then 57600 bit/s, up to three times each. */
ZEL_API int32_t zelDual_cmd_uart_searchController(ZelPingRecord *pingRecord,
                                                  const char *pSerialName);
/** Reads the controller's 64-byte network record by UDP broadcast into pOut. */
ZEL_API int32_t zelDual_cmd_udpNetworkSearch(uint8_t *pOut);
/** Reads a G6 controller's 206-byte network record by UDP broadcast (1 if it is longer). */
ZEL_API int32_t zelDual_cmd_udpNetworkSearch_6G(uint8_t *pOut);
/** Reads a G6 controller's 595-byte network record (web form) by UDP broadcast. */
ZEL_API int32_t zelDual_cmd_udpNetworkSearch_6G_Web(uint8_t *pOut);
/** Reads a G6 controller's 206-byte network record over TCP. */
ZEL_API int32_t zelDual_cmd_tcpNetworkSearch_6G(const char *pIP, uint16_t nPort, uint8_t *pOut);
/** Reads a G6 controller's 595-byte network record (web form) over TCP. */
ZEL_API int32_t zelDual_cmd_tcpNetworkSearch_6G_Web(const char *pIP, uint16_t nPort,
                                                    uint8_t *pOut);
/**
 * Reads a G6 controller's 206-byte network record over a serial port at speed index
 * nBaundIndex (1: 9600, 2: 57600), up to three tries; only the first 52 bytes are zeroed first.
 */
ZEL_API int32_t zelDual_cmd_uart_search_Net_6G(uint8_t *pOut, const char *pSerialName,
                                               uint8_t nBaundIndex);
/** The same with the 595-byte web record. */
ZEL_API int32_t zelDual_cmd_uart_search_Net_6G_Web(uint8_t *pOut, const char *pSerialName,
                                                   uint8_t nBaundIndex);
/**
 * Sets a controller's network identity by UDP broadcast. Addresses are dotted decimal text;
 * pValue8 points to 8 bytes and pBytes12 to 12, both sent as they stand. 0 or an error.
 */
ZEL_API int32_t zelDual_cmd_udpSetIP(uint8_t mode, const char *pIP1, const char *pIP2,
                                     const char *pIP3, uint16_t nPort, uint8_t type,
                                     const char *pIP4, uint16_t nPort2, const uint8_t *pValue8,
                                     uint16_t value16, const uint8_t *pBytes12);
/** Sets a controller's MAC by UDP broadcast; the six parts are decimal: "1-2-3-4-5-6". */
ZEL_API int32_t zelDual_cmd_udpSetMac(const char *pMac);
/**
 * Puts the controller's Wi-Fi module into access-point mode with this network name and
 * password, then restarts it (AT commands by UDP broadcast). 0, or -1 when a line was refused.
 */
ZEL_API int32_t zelDual_cmd_AT_setWifiSsidPwd(const char *pSsid, const char *pPwd);
/**
 * Reads the Wi-Fi module's network name and password into the host's zeroed buffers (no
 * terminator is written). 0; 2 if the module's answer was too short; -1 if it did not answer.
 */
ZEL_API int32_t zelDual_cmd_AT_getWifiSsidPwd(char *pSsid, char *pPwd);


/* ==== Device control ==================================================================== */

/*
 * Every entry connects to the controller at `address` (dotted text) and `port` (5005 is the
 * controller's own), learns its type, sends one command of group 0xA2 and closes again; the
 * zelDual_cmd_uart_ forms open the serial port `portName` at `speedIndex` (1: 9600 bit/s,
 * 2: 57600) instead. A failed connection or exchange is the result. Pointers the command reads
 * or writes must not be null (-1 without traffic).
 */

/** Restarts the controller. */
ZEL_API int32_t zelDual_cmd_sysReset(const char *address, uint16_t port);
/** Sets the controller's clock to the host's local time now. */
ZEL_API int32_t zelDual_cmd_check_time(const char *address, uint16_t port);
/** Switches the screen on or off at once. */
ZEL_API int32_t zelDual_cmd_coerceOnOff(const char *address, uint16_t port, uint8_t onOff);
/** Sets `count` timed switching entries of 4 decimal bytes each (sent in BCD). */
ZEL_API int32_t zelDual_cmd_timingOnOff(const char *address, uint16_t port, uint8_t count,
                                        const uint8_t *table);
/** Sends the 49-byte brightness table as it stands. */
ZEL_API int32_t zelDual_cmd_setBrightness(const char *address, uint16_t port,
                                          const uint8_t *table);
/** Cancels the timed switching. */
ZEL_API int32_t zelDual_cmd_cancelTimingOnOff(const char *address, uint16_t port);
/** Reads the 8-byte controller identifier into `id`; 1 if the controller sent more. */
ZEL_API int32_t zelDual_cmd_readControllerID(const char *address, uint16_t port, uint8_t *id);
/** Locks or unlocks the screen. */
ZEL_API int32_t zelDual_cmd_screenLock(const char *address, uint16_t port, uint8_t first,
                                       uint8_t second);
/** Locks or unlocks a program: 10 bytes of data (first, second, `four`, `value`). */
ZEL_API int32_t zelDual_cmd_programLock(const char *address, uint16_t port, uint8_t first,
                                        uint8_t second, const uint8_t *four, uint32_t value);
/** zelDual_cmd_programLock over a serial line. */
ZEL_API int32_t zelDual_cmd_uart_programLock(const char *portName, uint8_t speedIndex,
                                             uint8_t first, uint8_t second, const uint8_t *four,
                                             uint32_t value);
/** The G6 form over a serial line: 11 bytes, a zero byte in front of `value`. */
ZEL_API int32_t zelDual_cmd_uart_programLock_6G(const char *portName, uint8_t speedIndex,
                                                uint8_t first, uint8_t second,
                                                const uint8_t *four, uint32_t value);
/** Reads the 61-byte status record into `status`; 1 if the controller sent more. */
ZEL_API int32_t zelDual_cmd_check_controllerStatus(const char *address, uint16_t port,
                                                   uint8_t *status);
/** Changes the password: 6 bytes of each are sent, whatever terminators they hold. */
ZEL_API int32_t zelDual_cmd_setPassword(const char *address, uint16_t port,
                                        const char *oldPassword, const char *newPassword);
/** Removes the password (6 bytes). */
ZEL_API int32_t zelDual_cmd_deletePassword(const char *address, uint16_t port,
                                           const char *password);
/** Sets the delay time. */
ZEL_API int32_t zelDual_cmd_setDelayTime(const char *address, uint16_t port, uint16_t value);
/** Sets the button function. */
ZEL_API int32_t zelDual_cmd_setBtnFunc(const char *address, uint16_t port, uint8_t value);
/** Sends the 11-byte timed-reset table as it stands. */
ZEL_API int32_t zelDual_cmd_setTimingReset(const char *address, uint16_t port,
                                           const uint8_t *table);
/** Sets the display mode. */
ZEL_API int32_t zelDual_cmd_setDispMode(const char *address, uint16_t port, uint8_t value);
/**
 * Reads a battle time into the host's 20-byte `record`, whatever the result: the year word as
 * the controller gives it (BCD, 2026 is 0x2026), every further byte decoded from BCD.
 */
ZEL_API int32_t zelDual_cmd_battieTime(const char *address, uint16_t port, uint8_t selector,
                                       uint8_t *record);
/** Asks for a stopwatch; `out` is never written and a data answer gives -1. */
ZEL_API int32_t zelDual_cmd_getStopwatch(const char *address, uint16_t port, uint8_t selector,
                                         uint8_t *out);
/** Asks for the light sensor's value; `out` is never written and a data answer gives -1. */
ZEL_API int32_t zelDual_cmd_getSensorBrightnessValue(const char *address, uint16_t port,
                                                     uint8_t *out);
/** Sets the speed adjustment. */
ZEL_API int32_t zelDual_cmd_setSpeedAdjust(const char *address, uint16_t port, uint16_t value);
/** Sets the screen address. */
ZEL_API int32_t zelDual_cmd_setScreenAddress(const char *address, uint16_t port,
                                             uint16_t value);
/** Switches the external relay. */
ZEL_API int32_t zelDual_cmd_SetExternalRelay(const char *address, uint16_t port, uint8_t value);
/** Connects and learns the controller's type, and sends nothing else: the init's result. */
ZEL_API int32_t zelDual_cmd_setGlobalVolume(const char *address, uint16_t port, uint8_t first,
                                            uint8_t second);


/* ==== Controller file system and configuration files ==================================== */

/*
 * Files on the controller have names of exactly 4 bytes without terminator ("P000", "C000").
 * There are two file spaces: ofs (programs) and conf (configuration files). TCP entries take
 * `address` and `port`, the zelDual_cmd_uart_ forms `portName` and `speedIndex`, as in device
 * control. Pointers the command reads or writes must not be null (-1 without traffic).
 */

/** Erases the ordinary file space. */
ZEL_API int32_t zelDual_cmd_ofsFormat(const char *address, uint16_t port);
/** zelDual_cmd_ofsFormat over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsFormat(const char *portName, uint8_t speedIndex);
/** Deletes `count` files whose names stand back to back in `names` (4 bytes each). */
ZEL_API int32_t zelDual_cmd_ofsDeleteFormatFile(const char *address, uint16_t port,
                                                uint16_t count, const char *names);
/** zelDual_cmd_ofsDeleteFormatFile over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsDeleteFormatFile(const char *portName, uint8_t speedIndex,
                                                     uint16_t count, const char *names);
/**
 * Writes a file of `length` bytes: a header carrying name, type, length, `mode` (1 overwrites)
 * and the file's last 4 bytes (a program image's CRC-32), then blocks of zelDual_set_packetLen
 * bytes (1024 by default), one exchange each. Prints "g_packetLen ======= <n> \n". The result
 * is the last command's; a write that fails midway leaves a partial file: write it again.
 */
ZEL_API int32_t zelDual_cmd_ofsWriteFile(const char *address, uint16_t port, const char *name,
                                         uint8_t type, uint32_t length, uint8_t mode,
                                         const uint8_t *data);
/** zelDual_cmd_ofsWriteFile over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsWriteFile(const char *portName, uint8_t speedIndex,
                                              const char *name, uint8_t type, uint32_t length,
                                              uint8_t mode, const uint8_t *data);
/**
 * Opens a file for reading; on 0 the controller's first answer word is written over `name`.
 * `first` and `second` are plain values: the controller's file information is not delivered.
 */
ZEL_API int32_t zelDual_cmd_ofsStartReedFile(const char *address, uint16_t port, char *name,
                                             uint32_t first, uint32_t second);
/** zelDual_cmd_ofsStartReedFile over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsStartReedFile(const char *portName, uint8_t speedIndex,
                                                  char *name, uint32_t first, uint32_t second);
/** Reads a file in blocks. A controller's data answer gives -1 and `output` stays as it is. */
ZEL_API int32_t zelDual_cmd_ofsReedFileBlock(const char *address, uint16_t port,
                                             const char *name, uint8_t *output);
/** zelDual_cmd_ofsReedFileBlock over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsReedFileBlock(const char *portName, uint8_t speedIndex,
                                                  const char *name, uint8_t *output);
/**
 * Lists the ordinary file space into `record` (kind filter set by the host). The entries block
 * is allocated here, also when the listing fails midway; free it with
 * zelDual_cmd_ofs_freeDirBlock. 1 if a later block came longer than the one before it.
 */
ZEL_API int32_t zelDual_cmd_ofsReedDirBlock(const char *address, uint16_t port,
                                            ZelDirectoryRecord *record);
/** zelDual_cmd_ofsReedDirBlock over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsReedDirBlock(const char *portName, uint8_t speedIndex,
                                                 ZelDirectoryRecord *record);
/** Tells the controller that a series of file writes begins; optional, never sent by the library. */
ZEL_API int32_t zelDual_cmd_ofsStartFileTransf(const char *address, uint16_t port);
/** zelDual_cmd_ofsStartFileTransf over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsStartFileTransf(const char *portName, uint8_t speedIndex);
/** Tells the controller that the series of file writes is over. */
ZEL_API int32_t zelDual_cmd_ofsEndFileTransf(const char *address, uint16_t port);
/** zelDual_cmd_ofsEndFileTransf over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsEndFileTransf(const char *portName, uint8_t speedIndex);
/**
 * Deletes configuration files. The command carries one byte less than the names: the last
 * name's fourth byte is not sent, as the controller expects.
 */
ZEL_API int32_t zelDual_cmd_confDeleteFormatFile(const char *address, uint16_t port,
                                                 uint16_t count, const char *names);
/** zelDual_cmd_confDeleteFormatFile over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_confDeleteFormatFile(const char *portName, uint8_t speedIndex,
                                                      uint16_t count, const char *names);
/** Writes a configuration file like zelDual_cmd_ofsWriteFile, in blocks of 1024 bytes, silently. */
ZEL_API int32_t zelDual_cmd_confWriteFile(const char *address, uint16_t port, const char *name,
                                          uint8_t type, uint32_t length, uint8_t mode,
                                          const uint8_t *data);
/** zelDual_cmd_confWriteFile over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_confWriteFile(const char *portName, uint8_t speedIndex,
                                               const char *name, uint8_t type, uint32_t length,
                                               uint8_t mode, const uint8_t *data);
/** Opens a configuration file for reading; on 0 sets `name`, `first` and `second`. */
ZEL_API int32_t zelDual_cmd_confStartReedFile(const char *address, uint16_t port, char *name,
                                              uint32_t *first, uint32_t *second);
/** zelDual_cmd_confStartReedFile over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_confStartReedFile(const char *portName, uint8_t speedIndex,
                                                   char *name, uint32_t *first,
                                                   uint32_t *second);
/** As zelDual_cmd_ofsReedFileBlock, in the configuration space. */
ZEL_API int32_t zelDual_cmd_confReedFileBlock(const char *address, uint16_t port,
                                              const char *name, uint8_t *output);
/** zelDual_cmd_confReedFileBlock over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_confReedFileBlock(const char *portName, uint8_t speedIndex,
                                                   const char *name, uint8_t *output);
/** Reads the controller's two memory figures; written only on 0. */
ZEL_API int32_t zelDual_cmd_ofsGetMemoryVolume(const char *address, uint16_t port,
                                               uint32_t *first, uint32_t *second);
/** zelDual_cmd_ofsGetMemoryVolume over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsGetMemoryVolume(const char *portName, uint8_t speedIndex,
                                                    uint32_t *first, uint32_t *second);
/** Reads the transfer status (u8 and three u32); written whatever the result. */
ZEL_API int32_t zelDual_cmd_ofsGetTransStatus(const char *address, uint16_t port,
                                              uint8_t *state, uint32_t *first, uint32_t *second,
                                              uint32_t *third);
/** zelDual_cmd_ofsGetTransStatus over a serial line;
 *  `portName` and `speedIndex` (1: 9600, 2: 57600 bit/s) as above, results as for TCP. */
ZEL_API int32_t zelDual_cmd_uart_ofsGetTransStatus(const char *portName, uint8_t speedIndex,
                                                   uint8_t *state, uint32_t *first,
                                                   uint32_t *second, uint32_t *third);
/**
 * Stores the CRC-16 of the first 36 bytes of the 38-byte configuration `block` at its offset
 * 36 (the host's block changes), then writes it as configuration file "C000", type 1, mode 1.
 */
ZEL_API int32_t zelDual_cmd_sendConfigFile(const char *address, uint16_t port, uint8_t *block);
/** The G6 form: a 94-byte block, its CRC-16 over 92 bytes at offset 92. */
ZEL_API int32_t zelDual_cmd_sendConfigFile_G6(const char *address, uint16_t port,
                                              uint8_t *block);
/** zelDual_cmd_sendConfigFile over a serial line. */
ZEL_API int32_t zelDual_cmd_uart_sendConfigFile(const char *portName, uint8_t speedIndex,
                                                uint8_t *block);
/** Activates firmware: group 0xA2, code 0x03, the 4 bytes of `four`. */
ZEL_API int32_t zelDual_cmd_firmwareActivate(const char *address, uint16_t port,
                                             const uint8_t *four);
/** Copies directory entry `index` (13 bytes) into `entry`; -1 if index >= count. No traffic. */
ZEL_API int32_t zelDual_cmd_getFileAttr(const ZelDirectoryRecord *record, uint16_t index,
                                        uint8_t *entry);
/** Frees the record's entries block; the record's pointer keeps its value. 0. No traffic. */
ZEL_API int32_t zelDual_cmd_ofs_freeDirBlock(ZelDirectoryRecord *record);
/** The same as zelDual_cmd_ofs_freeDirBlock. */
ZEL_API int32_t zelDual_cmd_uart_ofsFreeDirBlock(ZelDirectoryRecord *record);


/* ==== Screen settings =================================================================== */

/** Sets the process-wide screen: colour class, the controller type code (which chooses the
 *  pixel transfer mode) and the plane order of a two-colour screen (1 or any other value).
 *  Prints "color = %d, ControllerType = %d,  doubleColor = %d; \r\n"; an unknown controller
 *  type code also prints "Error:can't find tranPixelMode,use 0 instead.\n" and uses mode 0.
 *  The settings hold until the next call (or a dynamic area, or zelDual_program_pictureArea,
 *  which set their own). Always 0. */
ZEL_API int32_t zelDual_program_setScreenParams_G56(E_ScreenColor_G56 color,
                                                    uint16_t ControllerType,
                                                    uint32_t doubleColor);


/* ==== G5 programs ======================================================================= */

/*
 * A G5 program is built by a series of calls on the one program under construction (no
 * handle): addProgram, AddArea, the content entries, integrate, write the image with
 * zelDual_cmd_ofsWriteFile, zelDual_program_freeBuffer, zelDual_program_deleteProgram. The
 * thread that makes the program owns it until deleteProgram; another thread's program call
 * waits until then. Content entries only record; everything is rendered at integration, with
 * the screen settings of that moment, except frames, which are encoded when they are added.
 * Each entry returns -1 when an argument it must read is null, and (content entries) when the
 * area does not exist or is not a text and picture area. Picture paths are kept as the
 * caller's pointers until integration. The entries act on a G6 program too, on what it shares
 * with a G5 one (see the G6 programs below).
 */

/** Starts the program: applies the file name rule to header->ProgramName ("P00n", "P0nn",
 *  "Pnnn" below 1000, the number alone from 1000 to 9999, and the negative numbers -100 to
 *  -999 as they print), writes the four characters back into the caller's header and keeps
 *  it. 0; -1 when the name is not four characters (the program is unchanged). */
ZEL_API int32_t zelDual_program_addProgram(ZelProgramHeader_G5 *header);
/** Replaces the header; the same rule and results. Areas, frame and periods stay. */
ZEL_API int32_t zelDual_program_changeProgramParams(ZelProgramHeader_G5 *header);
/** Keeps the play periods and sets PlayPeriodFlag to 1; a count of 0 switches them off (flag
 *  0) and keeps the periods given before. 0. */
ZEL_API int32_t zelDual_program_addPlayPeriodGrp(const ZelPlayPeriods_G5 *periods);
/** Adds an area at the end of the program. An area with the same id is replaced (the new one
 *  goes to the end) and the file's area count still rises: the controllers expect a count one
 *  above the areas after each replacement. Type 0 is a text and picture area, type 2 a clock
 *  area. 0; -1 for any other type (nothing changes). */
ZEL_API int32_t zelDual_program_AddArea(uint16_t areaID, const ZelAreaRecord_G5 *area);
/** Deletes an area; 0xFFFF deletes all of them (unless an area has that id). Always 0. */
ZEL_API int32_t zelDual_program_deleteArea(uint16_t areaID);
/** Moves and resizes an area (the low 16 bits of each value) and breaks its text again. 0; 29
 *  with "Error:Wrong areaID.This area does not exist.\n" when the area does not exist. */
ZEL_API int32_t zelDual_program_MoveArea(uint16_t areaID, uint32_t x, uint32_t y, int32_t width,
                                         int32_t height);
/** Gives the program a frame, replacing any: the header and the PNG strip at `pngPath`,
 *  encoded now. An unreadable PNG prints "Error:Can't find frame png.\n" and leaves no frame.
 *  Always 0 (but for the failures above). */
ZEL_API int32_t zelDual_program_addFrame(const ZelFrameHeader_G5 *frame, const char *pngPath);
/** The same function as zelDual_program_addFrame. */
ZEL_API int32_t zelDual_program_changeFrame(const ZelFrameHeader_G5 *frame, const char *pngPath);
/** Removes the program frame. 0. */
ZEL_API int32_t zelDual_program_removeFrame(void);

/** Sets the text of a text and picture area with a font family name (GBK), its style and page
 *  header, and breaks it into lines and pages. 0. */
ZEL_API int32_t zelDual_program_picturesAreaAddTxt(uint16_t areaID, const char *text,
                                                   const char *fontName,
                                                   const TextPageParams_G5 *params);
/** The same with a font file path (GBK), opened with FreeType. 0. */
ZEL_API int32_t zelDual_program_fontPath_picturesAreaAddTxt(uint16_t areaID, const char *text,
                                                            const char *fontPath,
                                                            const TextPageParams_G5 *params);
/** Replaces text, style and page header and keeps the font. 0. */
ZEL_API int32_t zelDual_program_picturesAreaChangeTxt(uint16_t areaID, const char *text,
                                                      const TextPageParams_G5 *params);
/** The same function as zelDual_program_picturesAreaChangeTxt. */
ZEL_API int32_t zelDual_program_fontPath_picturesAreaChangeTxt(uint16_t areaID, const char *text,
                                                               const TextPageParams_G5 *params);
/** Adds the PNG at `path` to the area's pictures, which play after its text. `picID` is a
 *  place in the play list: the picture goes in front of the one there, or at the end. Only the
 *  first nine bytes of `params` are read. The pointer `path` is kept: the string must live
 *  until integration. -1 with "Error:The picture file :<path> does not exist.ID:" (no line
 *  end) when the file cannot be opened. */
ZEL_API int32_t zelDual_program_pictureAreaAddPic(uint16_t areaID, uint16_t picID,
                                                  const TextPageParams_G5 *params,
                                                  const char *path);
/** Gives the area a frame: the settings and the PNG strip at `pngPath`, encoded now. The area
 *  gives up the strip's height on every side and its text is broken again. An area that has a
 *  frame keeps it (remove it first). An unreadable PNG prints "Error:Can't find frame png.\n"
 *  and leaves no frame. 0; -1 when the area does not exist. */
ZEL_API int32_t zelDual_program_picturesAreaAddFrame(uint16_t areaID,
                                                     const ZelFrameHeader_G5 *frame,
                                                     const char *pngPath);
/** Removes an area's frame and gives the area its full size back. Always 0. */
ZEL_API int32_t zelDual_program_pictureAreaRemoveFrame(uint16_t areaID);
/** Paints page `pageNum` of the area as a PNG for a preview: `result` gets the page count, the
 *  PNG's length and a pointer to it, which the area owns until its next preview. In an area
 *  with pictures, the number counts pictures. 0, or -1 with a console line. */
ZEL_API int32_t zelDual_program_pictureAreaGetOnePage(uint16_t areaID, uint32_t pageNum,
                                                      OnePageResult *result);
/** Renders every area with the current screen settings and builds the program file: header,
 *  play periods, frame, areas, CRC-32. Fills `file` with the name, type 0, length, a heap copy
 *  of the image (give it back with zelDual_program_freeBuffer) and the CRC. Also writes the
 *  image to "dataFantx.bin" in the working directory. 0; -1 when a page is too large for the
 *  controller's bit planes. */
ZEL_API int32_t zelDual_program_IntegrateProgramFile(ZelProgramFile_G5 *file);
/** Sends a fixed test program to a controller: sets a two-colour screen (mode 0, doubleColor
 *  2), makes "P000" with an empty area 0 at x 943, 80 x 80, in the current program, integrates
 *  it and writes it with overwrite 1. `reserved` is not read. The result of the connection or
 *  of the write. The program stays current and the screen settings stay as set. */
ZEL_API int32_t zelDual_program_pictureArea(const void *reserved, const char *address,
                                            uint16_t port);

/* ==== G5 clock areas ==================================================================== */

/*
 * A clock area (area type 2) holds a digital clock (date, week day, time of day) or an analog
 * one, which the controller keeps running by itself: the program file carries a background,
 * small glyph tables and the places of the changing fields, all rendered at integration with
 * the screen settings of that moment (a font that cannot be opened prints its line and the
 * clock is drawn in the default font). Each entry returns -1 when the area does not exist or
 * is not a clock area, and when a record it must read is null; the entries act on the clock
 * areas of a G6 program too. Integration leaves "123.png" (the last glyph cell) and "1-2-3.png"
 * (the last background) in the working directory.
 */

/** Gives the clock area a digital clock: the record and the font family (GBK) it names.
 *  Replaces a font path given before. 0. */
ZEL_API int32_t zelDual_program_timeAreaAddContent(uint16_t areaID,
                                                   const TimeContentRecord *content);
/** The same with a font file path (GBK) in the record's fontName. Replaces a family. 0. */
ZEL_API int32_t zelDual_program_fontPath_timeAreaAddContent(uint16_t areaID,
                                                            const TimeContentRecord *content);
/** Replaces size, colour, arrangement, formats and switches; the font stays (the record's
 *  fontName is not read). 0. */
ZEL_API int32_t zelDual_program_timeAreaChangeContent(uint16_t areaID,
                                                      const TimeContentRecord *content);
/** Draws the clock as it looks now (local time) as a PNG for a preview: `result` gets the page
 *  count 1, the PNG's length and a pointer to it, owned by the area until its next preview. A
 *  digital clock shows its fields as text; an analog one its dial with the hands in a fixed
 *  pose, in black. A digital clock with nothing to show gives a length of 0. 0. */
ZEL_API int32_t zelDual_program_timeAreaGetOnePage(uint16_t areaID, OnePageResult *result);
/** Makes the area an analog clock, for good: the hands' record (the controller draws them),
 *  the dial style (0 twelve strokes, 1 twelve dots, 2 a circle and twelve strokes; others an
 *  empty dial) and the dial's colours. Digital content stays stored, unused. 0. */
ZEL_API int32_t zelDual_program_timeAreaAddAnalogClock(uint16_t areaID,
                                                       const AnalogClockRecord *clock,
                                                       uint32_t dialStyle,
                                                       const ZelDialMarkColors *markColors);
/** The same function as zelDual_program_timeAreaAddAnalogClock. */
ZEL_API int32_t zelDual_program_timeAreaChangeAnalogClock(uint16_t areaID,
                                                          const AnalogClockRecord *clock,
                                                          uint32_t dialStyle,
                                                          const ZelDialMarkColors *markColors);
/** Uses the PNG at `pngPath` as the dial, stretched to the area, and makes the area an analog
 *  clock. The path is copied; the file must exist at integration (a missing one leaves the
 *  dial clear, without a message). 0. */
ZEL_API int32_t zelDual_program_timeAreaChangeDialPic(uint16_t areaID, const char *pngPath);
/** The same with the PNG's `length` bytes, which the library keeps in a temporary file of its
 *  own until the area ends. Serves the G5 and the G6 program. 0. */
ZEL_API int32_t zelDual_program_timeAreaChangeDialPicAdd_G56(uint16_t areaID, const uint8_t *png,
                                                             uint32_t length);
/** Goes back to the painted dial of the last analog clock given (style 0, all marks black, if
 *  none was); the area stays analog. 0. */
ZEL_API int32_t zelDual_program_timeAreaRemoveDialPic(uint16_t areaID);

/* ==== G6 programs ======================================================================= */

/*
 * A G6 program is built as a G5 one, with the _G6 entries, and becomes two files: the program
 * file "Pnnn" with the structure and the data file "Dnnn" with every page's pixels. Write both
 * with zelDual_cmd_ofsWriteFile. The program is the same one slot as a G5 program, and the
 * entries of both families act on it as far as it has what they use: the G5 entries without a G6
 * form (zelDual_program_pictureAreaRemoveFrame, the previews) work on a G6 program, and the G6
 * area, content, period and remove-frame entries on a G5 one. The G6 header, program frame and
 * integration entries return -1 when the current program is a G5 program.
 *
 * Every content entry finds its area first; when there is none it prints
 * "Error:program_<entry>==>Can not find the area.please check areaID.\n", <entry> being the
 * function's name without "zelDual_program_", and returns -1. It returns -1 without a line
 * when the area is of another kind (a colour on a text and picture area) or when an argument it
 * must read is null.
 */

/** Starts the G6 program: the name rule of zelDual_program_addProgram on header->ProgramName
 *  (the caller's header is not changed); the data file takes the name with a D in front ("P005"
 *  and "D005"). Prints the header's fields. 0; -1 (nothing printed, nothing changed) when the
 *  name is not four characters. */
ZEL_API int32_t zelDual_program_addProgram_G6(const ZelProgramHeader_G6 *header);
/** Replaces the header, silently; the same rule and results. Areas and frames stay. */
ZEL_API int32_t zelDual_program_changeProgramParams_G6(const ZelProgramHeader_G6 *header);
/** Keeps the play periods as zelDual_program_addPlayPeriodGrp does; the G6 header does not
 *  change. 0. */
ZEL_API int32_t zelDual_program_addPlayPeriodGrp_G6(const ZelPlayPeriods_G5 *periods);
/** Prints the record and adds an area: type 0 text and pictures, 2 a clock, 11 a background
 *  behind the others (the program then says it has one, also after the background is deleted).
 *  An area with the same id is replaced, and the count rises as in G5. Another type makes no
 *  area but raises the count all the same. 0. */
ZEL_API int32_t zelDual_program_addArea_G6(uint16_t areaID, const ZelAreaRecord_G6 *area);
/** As zelDual_program_deleteArea. 0. */
ZEL_API int32_t zelDual_program_deleteArea_G6(uint16_t areaID);
/** As zelDual_program_MoveArea. 0; 29 with its line when the area does not exist. */
ZEL_API int32_t zelDual_program_MoveArea_G6(uint16_t areaID, uint32_t x, uint32_t y,
                                            int32_t width, int32_t height);
/** Gives the program a frame, once: the settings and the PNG strip at `pngPath`, encoded now.
 *  0; -1 silently when the program has a frame (change it, or remove it first); -1 with
 *  "Error:Can't find frame png.\n" when the PNG cannot be read. */
ZEL_API int32_t zelDual_program_addFrame_G6(const ZelFrameParams_G6 *params, const char *pngPath);
/** Replaces the program frame. -1 with "Error:No frame have been added.\n" without one; -1
 *  with "Error:Can't find frame png.\n" when the PNG cannot be read, and then the new settings
 *  stand beside the old strip. 0 otherwise. */
ZEL_API int32_t zelDual_program_changeFrame_G6(const ZelFrameParams_G6 *params,
                                               const char *pngPath);
/** Removes the program frame. 0. */
ZEL_API int32_t zelDual_program_removeFrame_G6(void);

/** zelDual_program_picturesAreaAddTxt for a G6 area. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_picturesAreaAddTxt_G6(uint16_t areaID, const char *text,
                                                      const char *fontName,
                                                      const TextPageParams_G6 *params);
/** zelDual_program_fontPath_picturesAreaAddTxt for a G6 area. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_fontPath_picturesAreaAddTxt_G6(uint16_t areaID, const char *text,
                                                               const char *fontPath,
                                                               const TextPageParams_G6 *params);
/** zelDual_program_picturesAreaChangeTxt for a G6 area. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_picturesAreaChangeTxt_G6(uint16_t areaID, const char *text,
                                                         const TextPageParams_G6 *params);
/** The same as zelDual_program_picturesAreaChangeTxt_G6 but for the name in its line. */
ZEL_API int32_t zelDual_program_fontPath_picturesAreaChangeTxt_G6(uint16_t areaID,
                                                                  const char *text,
                                                                  const TextPageParams_G6 *params);
/** Adds the PNG at `path` as zelDual_program_pictureAreaAddPic does; the picture's pages carry
 *  its own page header (the first ten bytes of `params`). The file is tested first: -1 with
 *  "Error:The picture file :<path> does not exist.ID:" (no line end). 0, or -1 as above. */
ZEL_API int32_t zelDual_program_pictureAreaAddPic_G6(uint16_t areaID, uint16_t picID,
                                                     const TextPageParams_G6 *params,
                                                     const char *path);
/** Replaces the picture at play-list place `picID` by the PNG at `path` (not tested now), and
 *  the header of the first picture added with id `picID`. Nothing changes in an area without
 *  pictures. The pointer `path` is kept. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_pictureAreaChangePic_G6(uint16_t areaID, uint16_t picID,
                                                        const TextPageParams_G6 *params,
                                                        const char *path);
/** Makes the controller speak or play `soundText` (GBK, zero-terminated) with the area's pages,
 *  with the given settings. -1 with "Error:soundData is empty.\n" for an empty text, which
 *  leaves the sound off. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_pictureAreaEnableSound_G6(uint16_t areaID,
                                                          const ZelSoundParams_G6 *params,
                                                          const char *soundText);
/** The same as zelDual_program_pictureAreaEnableSound_G6 but for the name in its line. */
ZEL_API int32_t zelDual_program_pictureAreaChangeSoundSettings_G6(uint16_t areaID,
                                                                  const ZelSoundParams_G6 *params,
                                                                  const char *soundText);
/** Switches the area's sound off and forgets its settings and text. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_pictureAreaDisableSound_G6(uint16_t areaID);
/** Gives a G6 area a frame as zelDual_program_picturesAreaAddFrame does, with the G6 settings.
 *  An unreadable PNG prints "Error:PicturesArea_g6 Can't create_from_png. file:<path> \n" and
 *  leaves no frame. 0; -1 silently when the area does not exist. */
ZEL_API int32_t zelDual_program_picturesAreaAddFrame_G6(uint16_t areaID,
                                                        const ZelFrameParams_G6 *params,
                                                        const char *pngPath);
/** Adds the PNG at `path` to a background (or any text and picture area) as
 *  zelDual_program_pictureAreaAddPic_G6 does, without testing the file: a picture missing at
 *  integration prints "Error:The picture does not exist.ID:0\n" and gives no page. 0, or -1 as
 *  above. */
ZEL_API int32_t zelDual_program_backGroundPic_G6(uint16_t areaID, uint16_t picID,
                                                 const TextPageParams_G6 *params,
                                                 const char *path);
/** Makes a background one colour (0 to 7 a colour code, otherwise 0x00RRGGBB): one page,
 *  whatever pictures it has. 0xEEFFEEFF means no colour: the pictures count again. The page
 *  carries the area's own header, not `params`. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_backGroundColor_G6(uint16_t areaID, const TextPageParams_G6 *params,
                                                   uint32_t color);

/** Renders every area with the current screen settings and builds the two files: the program
 *  file (header, play periods, frame, background flag, areas with their page records, CRC-32)
 *  and the data file (type 9, its name, eight zero bytes, every page's pixels, CRC-32); a page
 *  record's data offset is one above its pixels' position in the data file. Fills `files` with
 *  heap copies (give them back with zelDual_program_freeBuffer_G6). Writes no trace file. 0; -1
 *  when a page is too large for the controller's bit planes or the program is a G5 program. */
ZEL_API int32_t zelDual_program_IntegrateProgramFile_G6(ZelProgramFile_G6 *files);

/* ==== G6 clock areas ==================================================================== */

/*
 * The G6 forms of the clock entries, for a clock area added with zelDual_program_addArea_G6 and
 * type 2. Each finds its area first: an unknown one prints
 * "Error:program_<name>==>Can not find the area.please check areaID.\n" and gives -1, <name>
 * being the function's name without "zelDual_program_" (the analog clock's line names
 * fontPath_timeAreaAddContent_G6, as it always has). An area of another kind, a null record,
 * and the analog clock and battle time entries on a clock area made by a G5 program's own add,
 * give -1 without a line.
 *
 * A G6 clock goes into both files: its items stay in the program file and point at their
 * bitmaps (the background and a copy of each item's glyph table) in the data file. On a
 * full-colour controller of the 0x66 family (0x0066, 0x0166, ...) the separators of a digital
 * clock also come as glyph items of their own, besides being painted on the background.
 */

/** zelDual_program_timeAreaAddContent for a G6 program. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_timeAreaAddContent_G6(uint16_t areaID,
                                                      const TimeContentRecord *content);
/** zelDual_program_fontPath_timeAreaAddContent for a G6 program. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_fontPath_timeAreaAddContent_G6(uint16_t areaID,
                                                               const TimeContentRecord *content);
/** zelDual_program_timeAreaChangeContent for a G6 program. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_timeAreaChangeContent_G6(uint16_t areaID,
                                                         const TimeContentRecord *content);
/** Makes a G6 clock area an analog clock, as zelDual_program_timeAreaAddAnalogClock does; the
 *  hands are kept in the form the screen settings of now take: one byte of each colour on a
 *  screen of single colours, 16 bits of each on a full-colour screen in pixel mode 3 or 4,
 *  32 bits in mode 5. Set the screen before. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_timeAreaAddAnalogClock_G6(uint16_t areaID,
                                                          const AnalogClockRecord *clock,
                                                          uint32_t dialStyle,
                                                          const ZelDialMarkColors *markColors);
/** The same as zelDual_program_timeAreaAddAnalogClock_G6 but for the name in its line. */
ZEL_API int32_t zelDual_program_timeAreaChangeAnalogClock_G6(uint16_t areaID,
                                                             const AnalogClockRecord *clock,
                                                             uint32_t dialStyle,
                                                             const ZelDialMarkColors *markColors);
/** zelDual_program_timeAreaChangeDialPic for a G6 program. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_timeAreaChangeDialPic_G6(uint16_t areaID, const char *pngPath);
/** zelDual_program_timeAreaRemoveDialPic for a G6 program. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_timeAreaRemoveDialPic_G6(uint16_t areaID);
/** Sets the battle time of a G6 clock area: the file's battle record gets 1 and the host's 9
 *  bytes. 0, or -1 as above. */
ZEL_API int32_t zelDual_program_timeAreaSetBattleTime_G6(uint16_t areaID,
                                                         const ZelBattleTime_G6 *battle);
/** Clears the battle time (flag and 9 bytes) of a G6 clock area; its attribute bytes stay. 0,
 *  or -1 as above. */
ZEL_API int32_t zelDual_program_timeAreaCancleBattleTime_G6(uint16_t areaID);

/* ==== Dynamic areas ===================================================================== */

/*
 * A dynamic area is a rectangle of the screen whose content the host replaces in real time,
 * without a program file. Every add entry first learns the controller's type (a ping over TCP,
 * the line's probe on a serial line), sets the screen settings from it (as
 * zelDual_program_setScreenParams_G56 does, with the value of zelDual_dynamicArea_SetDualPixel),
 * renders the pages with a local area and sends them in one version 240 command: up to 32768
 * bytes of command by the chunked exchange, above that by the heap exchange. Only an
 * acknowledge counts as success. Failures of the dynamic paths are written to the log file
 * "testDemoLog" in the working directory (level 1 errors, level 4 details).
 */

#pragma pack(push, 1)

/** The style of a text of a dynamic area (20 bytes): the style part of TextPageParams_G5. */
typedef struct ZelTextStyleRecord {
    uint32_t arrMode;        /**< offset 0: 0 single line, 1 multi-line */
    uint16_t fontSize;       /**< offset 4: points */
    uint32_t fontColor;      /**< offset 6: 0 to 7 a colour code, otherwise 0x00RRGGBB */
    uint8_t fontBold;        /**< offset 10 */
    uint8_t fontItalic;      /**< offset 11 */
    uint32_t styleWord12;    /**< offset 12: carried, not drawn with */
    uint16_t styleWord16;    /**< offset 16: carried, not drawn with */
    uint8_t horizontalAlign; /**< offset 18: 0 to 3 */
    uint8_t verticalAlign;   /**< offset 19: 0 to 3 */
} ZelTextStyleRecord;
ZEL_STATIC_ASSERT(sizeof(ZelTextStyleRecord) == 20, "ZelTextStyleRecord is 20 bytes");

/** One content of a G5 item-list add (and of the G6 item lists), 51 bytes. */
typedef struct DynamicAreaBaseInfo_5G {
    uint8_t kind;             /**< offset 0: 1 text, 2 picture; another kind adds no pages */
    uint8_t displayEffect;    /**< offset 1: 0x26 sends the pages last to first */
    uint8_t pageByte2;        /**< offset 2: for the controller */
    uint8_t pageByte3;        /**< offset 3: for the controller */
    uint16_t pageWord4;       /**< offset 4: for the controller */
    uint8_t pageByte6;        /**< offset 6: for the controller */
    ZelTextStyleRecord style; /**< offset 7 */
    const char *fontName;     /**< offset 27: family name, or a .ttf/.ttc file (any case) */
    const char *text;         /**< offset 35: GBK text (kind 1) */
    const char *picturePath;  /**< offset 43: PNG file (kind 2) */
} DynamicAreaBaseInfo_5G;
ZEL_STATIC_ASSERT(sizeof(DynamicAreaBaseInfo_5G) == 51, "DynamicAreaBaseInfo_5G is 51 bytes");

/** The sound of a G6 dynamic area or an independent sound message (29 bytes). */
typedef struct ZelDynamicSound_G6 {
    uint8_t enable;            /**< offset 0: 1 gives the area its sound; not read by the
                                  independent sound entries */
    uint8_t soundSettings1[4]; /**< offset 1: for the controller */
    uint32_t soundValue1;      /**< offset 5 */
    uint32_t soundValue2;      /**< offset 9 */
    uint8_t soundSettings2[4]; /**< offset 13 */
    uint32_t textLength;       /**< offset 17: bytes at text */
    const char *text;          /**< offset 21: the text to speak, GBK */
} ZelDynamicSound_G6;
ZEL_STATIC_ASSERT(sizeof(ZelDynamicSound_G6) == 29, "ZelDynamicSound_G6 is 29 bytes");

/** Where a G6 dynamic area stands, and its sound (41 bytes). */
typedef struct ZelDynamicAreaParams_G6 {
    uint8_t AreaType;         /**< offset 0: not read; a dynamic area is always type 16 */
    uint16_t AreaX;           /**< offset 1 */
    uint16_t AreaY;           /**< offset 3 */
    uint16_t AreaWidth;       /**< offset 5 */
    uint16_t AreaHeight;      /**< offset 7 */
    uint8_t unused[3];        /**< offset 9: not read */
    ZelDynamicSound_G6 sound; /**< offset 12: used by the text entries */
} ZelDynamicAreaParams_G6;
ZEL_STATIC_ASSERT(sizeof(ZelDynamicAreaParams_G6) == 41, "ZelDynamicAreaParams_G6 is 41 bytes");

/** One area of a set (zelDual_dynamicAreaS_*), 89 bytes. */
typedef struct ZelDynamicAreaSetItem_G6 {
    uint8_t areaID;               /**< offset 0: each number once per set */
    ZelDynamicAreaParams_G6 area; /**< offset 1 */
    TextPageParams_G6 page;       /**< offset 42: pictures read its first ten bytes */
    const char *font;             /**< offset 73: not read by the picture sets */
    const char *content;          /**< offset 81: the text, or the PNG path of a picture set */
} ZelDynamicAreaSetItem_G6;
ZEL_STATIC_ASSERT(sizeof(ZelDynamicAreaSetItem_G6) == 89, "ZelDynamicAreaSetItem_G6 is 89 bytes");

/** The frame of a G6 item-list area (15 bytes, passed by value). */
typedef struct ZelAreaFrmae_Dynamic_G6 {
    uint8_t frameFlag;      /**< offset 0: 1 for a frame, anything else for none */
    uint8_t frameHeader[5]; /**< offset 1: for the controller; the last byte is also the frame's
                               thickness in pixels */
    uint8_t unused;         /**< offset 6: not read */
    const char *pngPath;    /**< offset 7: the frame's PNG strip */
} ZelAreaFrmae_Dynamic_G6;
ZEL_STATIC_ASSERT(sizeof(ZelAreaFrmae_Dynamic_G6) == 15, "ZelAreaFrmae_Dynamic_G6 is 15 bytes");

/** One message of the independent sound entries (30 bytes). */
typedef struct ZelSoundItem_Independ {
    uint8_t itemByte;         /**< offset 0: sent by the update entry; not read by insert */
    ZelDynamicSound_G6 sound; /**< offset 1: its enable byte is not read */
} ZelSoundItem_Independ;
ZEL_STATIC_ASSERT(sizeof(ZelSoundItem_Independ) == 30, "ZelSoundItem_Independ is 30 bytes");

#pragma pack(pop)

/** Sets the double-colour value that the dynamic add entries pass on with the controller
 *  type when they set the screen (initially 1).
 *  @param dualPixel plane order of a two-colour screen
 *  @return 0 */
ZEL_API int32_t zelDual_dynamicArea_SetDualPixel(int32_t dualPixel);

/**
 * Adds or replaces a G5 dynamic area with a text. Pings pIP:nPort, sets the screen from the
 * answer, renders the text (the font is a file when it names ".ttf" or ".ttc" in any case,
 * otherwise a family name) and sends the pages.
 * @param pIP, nPort the controller
 * @param color the screen's colour class
 * @param headByte0, headByte1, headWord, playByte carried for the controller (defaults 0, 0, 5, 0)
 * @param listFlag 0 sends the listCount words of listWords; anything else sends the count only
 * @param listCount, listWords the list; a count above 0 with a null list gives -1
 * @param x, y, width, height the area, in pixels
 * @param frame read and ignored: a G5 dynamic area has no frame (its flag goes out as 0)
 * @param displayEffect, pageByte2, pageByte3, pageWord4, pageByte6 the pages' settings; 0x26
 *        sends the pages last to first
 * @param style, font, text the text
 * @return the exchange's result narrowed to 16 bits; the ping's failure; -1 when nothing was
 *         built. Console: "cmd_tcpPing run error..." on a failed ping, then
 *         "TK_Client init后，Client.m_DeviceType == 0x%x \n" and, when the connection's type is
 *         not the ping's, "oClient.m_DeviceType != retdata.ControllerType \n".
 */
ZEL_API int32_t zelDual_dynamicArea_AddAreaWithTxt_5G(
    const char *pIP, uint16_t nPort, E_ScreenColor_G56 color, uint8_t headByte0, uint8_t headByte1,
    uint16_t headWord, uint8_t listFlag, uint16_t listCount, const uint16_t *listWords,
    uint8_t playByte, uint16_t x, uint16_t y, uint16_t width, uint16_t height,
    ZelFrameHeader_G5 frame, uint8_t displayEffect, uint8_t pageByte2, uint8_t pageByte3,
    uint16_t pageWord4, uint8_t pageByte6, ZelTextStyleRecord style, const char *font,
    const char *text);
/** zelDual_dynamicArea_AddAreaWithTxt_5G over a serial line (speed index 1: 9600, 2: 57600);
 *  the line's probe gives the controller type. A line that does not open logs
 *  "oSerialClient.init error! pSerialName=%s, nSpeedIndex=%d, err=%d" at level 1.
 *  @return as the TCP form; -1 when the line does not open */
ZEL_API int32_t zelDual_dynamicArea_AddAreaWithTxt_5G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t headByte0,
    uint8_t headByte1, uint16_t headWord, uint8_t listFlag, uint16_t listCount,
    const uint16_t *listWords, uint8_t playByte, uint16_t x, uint16_t y, uint16_t width,
    uint16_t height, ZelFrameHeader_G5 frame, uint8_t displayEffect, uint8_t pageByte2,
    uint8_t pageByte3, uint16_t pageWord4, uint8_t pageByte6, ZelTextStyleRecord style,
    const char *font, const char *text);
/** zelDual_dynamicArea_AddAreaWithTxt_5G with the frame and the style by pointer (null: -1).
 *  @return as zelDual_dynamicArea_AddAreaWithTxt_5G */
ZEL_API int32_t zelDual_dynamicArea_AddAreaWithTxt_Point_5G(
    const char *pIP, uint16_t nPort, E_ScreenColor_G56 color, uint8_t headByte0, uint8_t headByte1,
    uint16_t headWord, uint8_t listFlag, uint16_t listCount, const uint16_t *listWords,
    uint8_t playByte, uint16_t x, uint16_t y, uint16_t width, uint16_t height,
    const ZelFrameHeader_G5 *frame, uint8_t displayEffect, uint8_t pageByte2, uint8_t pageByte3,
    uint16_t pageWord4, uint8_t pageByte6, const ZelTextStyleRecord *style, const char *font,
    const char *text);
/** The serial form of zelDual_dynamicArea_AddAreaWithTxt_Point_5G.
 *  @return as zelDual_dynamicArea_AddAreaWithTxt_5G_Serial */
ZEL_API int32_t zelDual_dynamicArea_AddAreaWithTxt_Point_5G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t headByte0,
    uint8_t headByte1, uint16_t headWord, uint8_t listFlag, uint16_t listCount,
    const uint16_t *listWords, uint8_t playByte, uint16_t x, uint16_t y, uint16_t width,
    uint16_t height, const ZelFrameHeader_G5 *frame, uint8_t displayEffect, uint8_t pageByte2,
    uint8_t pageByte3, uint16_t pageWord4, uint8_t pageByte6, const ZelTextStyleRecord *style,
    const char *font, const char *text);
/** Adds or replaces a G5 dynamic area with the PNG at `path`, as the text form does. Console:
 *  also "retdata.ControllerType == 0x%x \n" and "ret =====cmd_tcpPing===== %d \n" after the ping.
 *  @return as zelDual_dynamicArea_AddAreaWithTxt_5G; -1 on an exception */
ZEL_API int32_t zelDual_dynamicArea_AddAreaWithPic_5G(
    const char *pIP, uint16_t nPort, E_ScreenColor_G56 color, uint8_t headByte0, uint8_t headByte1,
    uint16_t headWord, uint8_t listFlag, uint16_t listCount, const uint16_t *listWords,
    uint8_t playByte, uint16_t x, uint16_t y, uint16_t width, uint16_t height,
    ZelFrameHeader_G5 frame, uint8_t displayEffect, uint8_t pageByte2, uint8_t pageByte3,
    uint16_t pageWord4, uint8_t pageByte6, const char *path);
/** The serial form of zelDual_dynamicArea_AddAreaWithPic_5G; a line that does not open logs
 *  "oSerialClient.init error! pSerialName=%s, nBaundIndex=%d, err=%d" at level 1.
 *  @return as the TCP form; -1 when the line does not open */
ZEL_API int32_t zelDual_dynamicArea_AddAreaWithPic_5G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t headByte0,
    uint8_t headByte1, uint16_t headWord, uint8_t listFlag, uint16_t listCount,
    const uint16_t *listWords, uint8_t playByte, uint16_t x, uint16_t y, uint16_t width,
    uint16_t height, ZelFrameHeader_G5 frame, uint8_t displayEffect, uint8_t pageByte2,
    uint8_t pageByte3, uint16_t pageWord4, uint8_t pageByte6, const char *path);
/** Adds a G5 dynamic area whose pages come from `count` contents, texts and pictures mixed, in
 *  order. Console: "===============zelDual_dynamicArea_AddAreaInfos_5G=======================\r\n"
 *  and the first item's font and text or path.
 *  @param pIP, nPort, color, headByte0, headByte1, headWord, listFlag, listCount, listWords,
 *         playByte, x, y, width, height, frame as zelDual_dynamicArea_AddAreaWithTxt_5G
 *  @param count, items `count` pointers to contents
 *  @return as zelDual_dynamicArea_AddAreaWithPic_5G; -1 for no items */
ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_5G(
    const char *pIP, uint16_t nPort, E_ScreenColor_G56 color, uint8_t headByte0, uint8_t headByte1,
    uint16_t headWord, uint8_t listFlag, uint16_t listCount, const uint16_t *listWords,
    uint8_t playByte, uint16_t x, uint16_t y, uint16_t width, uint16_t height,
    ZelFrameHeader_G5 frame, uint8_t count, const DynamicAreaBaseInfo_5G *const *items);
/** The serial form of zelDual_dynamicArea_AddAreaInfos_5G.
 *  @return as the TCP form; -1 when the line does not open */
ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_5G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t headByte0,
    uint8_t headByte1, uint16_t headWord, uint8_t listFlag, uint16_t listCount,
    const uint16_t *listWords, uint8_t playByte, uint16_t x, uint16_t y, uint16_t width,
    uint16_t height, ZelFrameHeader_G5 frame, uint8_t count,
    const DynamicAreaBaseInfo_5G *const *items);
/** zelDual_dynamicArea_AddAreaInfos_5G with the contents as one packed array (stride 51).
 *  @return as zelDual_dynamicArea_AddAreaInfos_5G */
ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_5G_Point(
    const char *pIP, uint16_t nPort, E_ScreenColor_G56 color, uint8_t headByte0, uint8_t headByte1,
    uint16_t headWord, uint8_t listFlag, uint16_t listCount, const uint16_t *listWords,
    uint8_t playByte, uint16_t x, uint16_t y, uint16_t width, uint16_t height,
    ZelFrameHeader_G5 frame, uint8_t count, const DynamicAreaBaseInfo_5G *items);

/** Deletes a dynamic area of a G5 or G6 controller; 0xFF (-1) deletes them all.
 *  @param pIP, nPort the controller
 *  @param areaNumber up to 64, or -1
 *  @return the exchange's result narrowed to 16 bits; -1 without traffic for 65 to 127 */
ZEL_API int32_t zelDual_dynamicArea_DelArea_5G(const char *pIP, uint16_t nPort, int8_t areaNumber);
/** Deletes `count` areas by number. @return as zelDual_dynamicArea_DelArea_5G; -1 for a null
 *  list */
ZEL_API int32_t zelDual_dynamicArea_DelAreaS_5G(const char *pIP, uint16_t nPort, uint8_t count,
                                                const uint8_t *areaNumbers);
/** zelDual_dynamicArea_DelArea_5G over a serial line. @return as the TCP form; -1 for a null
 *  name or a speed index other than 1 and 2 */
ZEL_API int32_t zelDual_dynamicArea_DelArea_G5_Serial(const char *pSerialName,
                                                      uint8_t nSpeedIndex, int8_t areaNumber);
/** zelDual_dynamicArea_DelAreaS_5G over a serial line. @return as zelDual_dynamicArea_DelArea_G5_Serial */
ZEL_API int32_t zelDual_dynamicArea_DelAreaS_G5_Serial(const char *pSerialName,
                                                       uint8_t nSpeedIndex, uint8_t count,
                                                       const uint8_t *areaNumbers);

/**
 * Adds or replaces G6 dynamic area `areaID` with a text in fixed settings: a horizontal roll
 * (effect 4), single line, colour 1, centred, shown with all programs at once.
 * @param pIP, nPort the controller; a port below 1024 gives -1 without traffic
 * @param color the screen's colour class
 * @param areaID the area's number
 * @param x, y, width, height the area, in pixels
 * @param font, fontSize, text family name or .ttf/.ttc file, size in points, GBK text
 * @return the exchange's result; the ping's failure. Console: "ret =====cmd_tcpPing===== %d \n"
 *         after the ping, "TK_Client init后，Client.m_DeviceType == 0x%x \n" after the connect.
 */
ZEL_API int32_t zelDual_dynamicArea_AddAreaTxt_6G(const char *pIP, uint32_t nPort,
                                                  E_ScreenColor_G56 color, uint8_t areaID,
                                                  uint16_t x, uint16_t y, uint16_t width,
                                                  uint16_t height, const char *font,
                                                  uint8_t fontSize, const char *text);
/**
 * Adds or replaces G6 dynamic area `areaID` with a text in the host's settings, with the sound
 * of area->sound when its enable byte is 1.
 * @return 0, or -1: bad arguments (no trace), or a failed ping, connect or exchange, each
 *         logged at level 1 ("cmd_tcpPing run error! pIP=%s, nPort=%d, ret=%d",
 *         "oClient.init error! pIP=%s, nPort=%d, err=%d",
 *         "send_recv_cmd_1K error! pIP=%s, nPort=%d, DataLen=%d, nSendResutl=%d")
 */
ZEL_API int32_t zelDual_dynamicArea_AddAreaTxtDetails_6G(const char *pIP, uint32_t nPort,
                                                         E_ScreenColor_G56 color, uint8_t areaID,
                                                         const ZelDynamicAreaParams_G6 *area,
                                                         const TextPageParams_G6 *page,
                                                         const char *font, const char *text);
/** The serial form of zelDual_dynamicArea_AddAreaTxtDetails_6G; speed index 1 or 2 only. A line
 *  that does not open logs "oSerialClient.init error! pSerialPort=%s, nSerialPortValueIndex=%d,
 *  err=%d". @return as the TCP form */
ZEL_API int32_t zelDual_dynamicArea_AddAreaTxtDetails_6G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t areaID,
    const ZelDynamicAreaParams_G6 *area, const TextPageParams_G6 *page, const char *font,
    const char *text);
/** zelDual_dynamicArea_AddAreaTxtDetails_6G shown with the listed programs (all of them for a
 *  count of 0), not at once. A count above 512 gives -1.
 *  @return the exchange's result narrowed to 16 bits; -1 for bad arguments or a failed ping */
ZEL_API int32_t zelDual_dynamicArea_AddAreaTxtDetails_WithProgram_6G(
    const char *pIP, uint32_t nPort, E_ScreenColor_G56 color, uint8_t areaID,
    const ZelDynamicAreaParams_G6 *area, const TextPageParams_G6 *page, const char *font,
    const char *text, uint16_t programCount, const uint16_t *programs);
/** The serial form (any positive speed index; a line that does not open logs
 *  "oSerialClient.init error! pSerialName=%s, nBaudRateIndex=%d, err=%d").
 *  @return as the TCP form */
ZEL_API int32_t zelDual_dynamicArea_AddAreaTxtDetails_WithProgram_6G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t areaID,
    const ZelDynamicAreaParams_G6 *area, const TextPageParams_G6 *page, const char *font,
    const char *text, uint16_t programCount, const uint16_t *programs);
/** Adds or replaces G6 dynamic area `areaID` with the PNG at `path`; `page` is read for its
 *  first ten bytes. @return the exchange's result narrowed to 16 bits; -1 for bad arguments or
 *  a failed ping */
ZEL_API int32_t zelDual_dynamicArea_AddAreaPic_6G(const char *pIP, uint32_t nPort,
                                                  E_ScreenColor_G56 color, uint8_t areaID,
                                                  uint16_t x, uint16_t y, uint16_t width,
                                                  uint16_t height, const TextPageParams_G6 *page,
                                                  const char *path);
/** The serial form of zelDual_dynamicArea_AddAreaPic_6G (any positive speed index).
 *  @return as the TCP form */
ZEL_API int32_t zelDual_dynamicArea_AddAreaPic_6G_Serial(const char *pSerialName,
                                                         uint8_t nSpeedIndex,
                                                         E_ScreenColor_G56 color, uint8_t areaID,
                                                         uint16_t x, uint16_t y, uint16_t width,
                                                         uint16_t height,
                                                         const TextPageParams_G6 *page,
                                                         const char *path);
/** zelDual_dynamicArea_AddAreaPic_6G shown with the listed programs; a count above 512 gives
 *  -1. @return as zelDual_dynamicArea_AddAreaPic_6G */
ZEL_API int32_t zelDual_dynamicArea_AddAreaPic_WithProgram_6G(
    const char *pIP, uint32_t nPort, E_ScreenColor_G56 color, uint8_t areaID, uint16_t x,
    uint16_t y, uint16_t width, uint16_t height, const TextPageParams_G6 *page, const char *path,
    uint16_t programCount, const uint16_t *programs);
/** The serial form of zelDual_dynamicArea_AddAreaPic_WithProgram_6G. @return as the TCP form */
ZEL_API int32_t zelDual_dynamicArea_AddAreaPic_WithProgram_G6_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t areaID,
    uint16_t x, uint16_t y, uint16_t width, uint16_t height, const TextPageParams_G6 *page,
    const char *path, uint16_t programCount, const uint16_t *programs);
/** Deletes G6 dynamic area `areaID` (0xFF: all); the command is the G5 one.
 *  @return the exchange's result narrowed to 16 bits; -1 for a port below 1024 or an area
 *  number from 65 to 127 */
ZEL_API int32_t zelDual_dynamicArea_DelArea_6G(const char *pIP, uint32_t nPort, uint8_t areaID);
/** Deletes `count` G6 dynamic areas. @return as zelDual_dynamicArea_DelArea_6G; -1 for a null
 *  list */
ZEL_API int32_t zelDual_dynamicArea_DelAreas_6G(const char *pIP, uint32_t nPort, uint8_t count,
                                                const uint8_t *areaIDs);
/** zelDual_dynamicArea_DelArea_6G over a serial line (speed index 1 or 2). @return as the TCP
 *  form */
ZEL_API int32_t zelDual_dynamicArea_DelArea_6G_Serial(const char *pSerialName,
                                                      uint8_t nSpeedIndex, uint8_t areaID);
/** zelDual_dynamicArea_DelAreas_6G over a serial line (speed index 1 or 2). @return as the TCP
 *  form */
ZEL_API int32_t zelDual_dynamicArea_DelAreas_6G_Serial(const char *pSerialName,
                                                       uint8_t nSpeedIndex, uint8_t count,
                                                       const uint8_t *areaIDs);

/**
 * Sends `count` G6 dynamic areas with texts in one command: every area block first, then all
 * pixels. An area number used twice prints " 区域ID??d 已存在！\n" and sends nothing.
 * @param pIP, nPort the controller; a port below 1024 gives -1 without traffic
 * @param color the screen's colour class
 * @param count, items `count` areas; each needs its font and its text
 * @return the exchange's result; -1 for bad arguments, a failed ping or a failed area. Console:
 *         "retdata.ControllerType == 0x%x \n", "ret =====cmd_tcpPing===== %d \n",
 *         "TK_Client init后，Client.m_DeviceType == 0x%x \n"
 */
ZEL_API int32_t zelDual_dynamicAreaS_AddTxtDetails_6G(const char *pIP, uint32_t nPort,
                                                      E_ScreenColor_G56 color, uint8_t count,
                                                      const ZelDynamicAreaSetItem_G6 *items);
/** The serial form (any positive speed index). @return as the TCP form */
ZEL_API int32_t zelDual_dynamicAreaS_AddTxtDetails_6G_Serial(const char *pSerialName,
                                                             uint8_t nSpeedIndex,
                                                             E_ScreenColor_G56 color,
                                                             uint8_t count,
                                                             const ZelDynamicAreaSetItem_G6 *items);
/** zelDual_dynamicAreaS_AddTxtDetails_6G with every area shown with the listed programs; a
 *  count above 0 needs its list. @return as zelDual_dynamicAreaS_AddTxtDetails_6G */
ZEL_API int32_t zelDual_dynamicAreaS_AddTxtDetails_WithProgram_6G(
    const char *pIP, uint32_t nPort, E_ScreenColor_G56 color, uint8_t count,
    const ZelDynamicAreaSetItem_G6 *items, uint16_t programCount, const uint16_t *programs);
/** The serial form. @return as the TCP form */
ZEL_API int32_t zelDual_dynamicAreaS_AddTxtDetails_WithProgram_G6_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t count,
    const ZelDynamicAreaSetItem_G6 *items, uint16_t programCount, const uint16_t *programs);
/** The picture sets: each area's content is a PNG path. @return as the text sets */
ZEL_API int32_t zelDual_dynamicAreaS_AddAreaPic_6G(const char *pIP, uint32_t nPort,
                                                   E_ScreenColor_G56 color, uint8_t count,
                                                   const ZelDynamicAreaSetItem_G6 *items);
/** The serial form of zelDual_dynamicAreaS_AddAreaPic_6G. @return as the TCP form */
ZEL_API int32_t zelDual_dynamicAreaS_AddAreaPic_6G_Serial(const char *pSerialName,
                                                          uint8_t nSpeedIndex,
                                                          E_ScreenColor_G56 color, uint8_t count,
                                                          const ZelDynamicAreaSetItem_G6 *items);
/** zelDual_dynamicAreaS_AddAreaPic_6G shown with the listed programs. @return as the text sets */
ZEL_API int32_t zelDual_dynamicAreaS_AddAreaPic_WithProgram_6G(
    const char *pIP, uint32_t nPort, E_ScreenColor_G56 color, uint8_t count,
    const ZelDynamicAreaSetItem_G6 *items, uint16_t programCount, const uint16_t *programs);
/** The serial form. @return as the TCP form */
ZEL_API int32_t zelDual_dynamicAreaS_AddAreaPic_WithProgram_6G_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t count,
    const ZelDynamicAreaSetItem_G6 *items, uint16_t programCount, const uint16_t *programs);

/**
 * Adds G6 dynamic area `areaID` whose pages come from `count` contents, texts and pictures
 * mixed, with an optional frame, shown with all programs or those listed. The pages are rendered
 * inside the frame; the area keeps its rectangle. Logs "uWidth = %d;  uHeight = %d;  fontName =
 * %s; \r\n" at level 4 with the first content's font; font arguments are always family names.
 * @param pIP, nPort the controller
 * @param color the screen's colour class
 * @param areaID the area's number
 * @param runMode, timeout, immediate carried for the controller
 * @param programCount, programs the program list (a count above 0 needs its list)
 * @param x, y, width, height the area, in pixels, frame included
 * @param allPrograms 1 all programs (the count is sent, the numbers not), 0 the list
 * @param frame a frame when its flag is 1; a PNG that does not read prints
 *        "Error: zel_dual_sdk Can't create_from_png. file: %s \n" and gives -1
 * @param count, items `count` pointers to contents (1 text, 2 picture)
 * @return the exchange's result (a failure also prints
 *         "Failed! oClient.send_recv_cmd!  nSendResult = %d \r\n"); the ping's failure; -1
 *         for no contents or nothing to send
 */
ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_6G(
    const char *pIP, uint32_t nPort, E_ScreenColor_G56 color, uint8_t areaID, uint8_t runMode,
    uint16_t timeout, uint8_t allPrograms, uint16_t programCount, const uint16_t *programs,
    uint8_t immediate, uint16_t x, uint16_t y, uint16_t width, uint16_t height,
    ZelAreaFrmae_Dynamic_G6 frame, uint8_t count, const DynamicAreaBaseInfo_5G *const *items);
/** The serial form of zelDual_dynamicArea_AddAreaInfos_6G; a line that does not open logs
 *  "oSerialClient.init error! pCharsCOMPort=%s, nSerialPortValueIndex=%d, err=%d" at level 1.
 *  @return as the TCP form; -1 when the line does not open */
ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_G6_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t areaID,
    uint8_t runMode, uint16_t timeout, uint8_t allPrograms, uint16_t programCount,
    const uint16_t *programs, uint8_t immediate, uint16_t x, uint16_t y, uint16_t width,
    uint16_t height, ZelAreaFrmae_Dynamic_G6 frame, uint8_t count,
    const DynamicAreaBaseInfo_5G *const *items);
/** zelDual_dynamicArea_AddAreaInfos_6G with the contents as one packed array (stride 51), font
 *  files allowed (".ttf", ".ttc" in any case), pages rendered with the value of
 *  zelDual_dynamicArea_SetDualPixel, and the area's sound when `sound` is not null and its
 *  enable byte is 1. @return as zelDual_dynamicArea_AddAreaInfos_6G */
ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_6G_V2(
    const char *pIP, uint32_t nPort, E_ScreenColor_G56 color, uint8_t areaID, uint8_t runMode,
    uint16_t timeout, uint8_t allPrograms, uint16_t programCount, const uint16_t *programs,
    uint8_t immediate, uint16_t x, uint16_t y, uint16_t width, uint16_t height,
    ZelAreaFrmae_Dynamic_G6 frame, uint8_t count, const DynamicAreaBaseInfo_5G *items,
    const ZelDynamicSound_G6 *sound);
/** The serial form of zelDual_dynamicArea_AddAreaInfos_6G_V2, without sound. It sets the screen
 *  only after the frame is encoded: the frame takes `color` with the pixel mode and plane order
 *  of the screen set before the call.
 *  @return as zelDual_dynamicArea_AddAreaInfos_G6_Serial */
ZEL_API int32_t zelDual_dynamicArea_AddAreaInfos_6G_V2_Serial(
    const char *pSerialName, uint8_t nSpeedIndex, E_ScreenColor_G56 color, uint8_t areaID,
    uint8_t runMode, uint16_t timeout, uint8_t allPrograms, uint16_t programCount,
    const uint16_t *programs, uint8_t immediate, uint16_t x, uint16_t y, uint16_t width,
    uint16_t height, ZelAreaFrmae_Dynamic_G6 frame, uint8_t count,
    const DynamicAreaBaseInfo_5G *items);

/** Makes a G6 controller speak a text without any area (no ping, no screen settings).
 *  @param pIP, nPort the controller; a port below 1024 gives -1
 *  @param record the message; its text must have a length above 0
 *  @param second, first two bytes for the controller, sent as first, second
 *  @return the exchange's result; -1 for bad arguments or a port below 1024 */
ZEL_API int32_t zelDual_dynamicArea_InsertSoundIndepend(const char *pIP, uint32_t nPort,
                                                        const ZelSoundItem_Independ *record,
                                                        uint8_t second, uint8_t first);
/** Replaces a G6 controller's list of sound messages with `count` records (the count byte on
 *  the wire holds its low 8 bits).
 *  @return the exchange's result; -1 for bad arguments or a port below 1024 */
ZEL_API int32_t zelDual_dynamicArea_UpdateSoundIndepend(const char *pIP, uint32_t nPort,
                                                        const ZelSoundItem_Independ *records,
                                                        uint16_t count, uint8_t first);

#ifdef __cplusplus
}
#endif

#endif /* ZEL_SDK_DUAL_H */
