"""Loading the shared library and declaring the C functions' argument and result types."""

import ctypes
import ctypes.util
import os
from ctypes import POINTER, c_char_p, c_int32, c_size_t, c_uint8, c_uint16, c_uint32

from .records import (AnalogClockRecord, OnePageResult, TextPageParams_G5, TextPageParams_G6,
                      TimeContentRecord, ZelAreaRecord_G5, ZelAreaRecord_G6, ZelBattleTime_G6,
                      ZelCrc16Record, ZelCrc32Record, ZelDialMarkColors, ZelDirectoryRecord,
                      ZelFrameHeader_G5, ZelFrameParams_G6, ZelPingRecord, ZelPlayPeriods_G5,
                      ZelProgramFile_G5, ZelProgramFile_G6, ZelProgramHeader_G5,
                      ZelProgramHeader_G6, ZelSoundParams_G6)

ENV_LIBRARY = "ZEL_SDK_DUAL_LIBRARY"
SONAME = "libzel_sdk_dual.so.0"

_u8p = POINTER(c_uint8)
_u32p = POINTER(c_uint32)
_addr = [c_char_p, c_uint16]  # address text and port of every TCP command
_uart = [c_char_p, c_uint8]   # serial port name and speed index (1: 9600, 2: 57600)

# name: argument types; every one of these gives an int32 result.
_PROTOTYPES = {
    "zelDual_InitSdk": [],
    "zelDual_ReleaseSdk": [],
    "zelDual_set_screenNum_G56": [c_uint16],
    "zelDual_set_packetLen": [c_uint16],
    "zelDual_get_crc16": [POINTER(ZelCrc16Record)],
    "zelDual_get_crc32": [POINTER(ZelCrc32Record)],
    "zelDual_program_freeBuffer": [POINTER(ZelProgramFile_G5)],
    "zelDual_program_freeBuffer_G6": [POINTER(ZelProgramFile_G6)],
    "zelDual_program_deleteProgram": [],
    "zelDual_program_deleteProgram_G6": [],
    "GB2312ToUTF8": [c_char_p, c_char_p, c_size_t],
    # Discovery and network configuration
    "zelDual_cmd_tcpPing": _addr + [POINTER(ZelPingRecord)],
    "zelDual_cmd_uart_searchController": [POINTER(ZelPingRecord), c_char_p],
    "zelDual_cmd_tcpNetworkSearch_6G": _addr + [_u8p],
    "zelDual_cmd_tcpNetworkSearch_6G_Web": _addr + [_u8p],
    # Device control
    "zelDual_cmd_sysReset": _addr,
    "zelDual_cmd_check_time": _addr,
    "zelDual_cmd_coerceOnOff": _addr + [c_uint8],
    "zelDual_cmd_timingOnOff": _addr + [c_uint8, _u8p],
    "zelDual_cmd_setBrightness": _addr + [_u8p],
    "zelDual_cmd_cancelTimingOnOff": _addr,
    "zelDual_cmd_readControllerID": _addr + [_u8p],
    "zelDual_cmd_screenLock": _addr + [c_uint8, c_uint8],
    "zelDual_cmd_programLock": _addr + [c_uint8, c_uint8, _u8p, c_uint32],
    "zelDual_cmd_check_controllerStatus": _addr + [_u8p],
    "zelDual_cmd_setPassword": _addr + [c_char_p, c_char_p],
    "zelDual_cmd_deletePassword": _addr + [c_char_p],
    "zelDual_cmd_setDelayTime": _addr + [c_uint16],
    "zelDual_cmd_setBtnFunc": _addr + [c_uint8],
    "zelDual_cmd_setTimingReset": _addr + [_u8p],
    "zelDual_cmd_setDispMode": _addr + [c_uint8],
    "zelDual_cmd_battieTime": _addr + [c_uint8, _u8p],
    "zelDual_cmd_setSpeedAdjust": _addr + [c_uint16],
    "zelDual_cmd_setScreenAddress": _addr + [c_uint16],
    "zelDual_cmd_SetExternalRelay": _addr + [c_uint8],
    "zelDual_cmd_firmwareActivate": _addr + [_u8p],
    # Files
    "zelDual_cmd_ofsFormat": _addr,
    "zelDual_cmd_uart_ofsFormat": _uart,
    "zelDual_cmd_ofsDeleteFormatFile": _addr + [c_uint16, c_char_p],
    "zelDual_cmd_ofsWriteFile": _addr + [c_char_p, c_uint8, c_uint32, c_uint8, _u8p],
    "zelDual_cmd_uart_ofsWriteFile": _uart + [c_char_p, c_uint8, c_uint32, c_uint8, _u8p],
    "zelDual_cmd_ofsReedDirBlock": _addr + [POINTER(ZelDirectoryRecord)],
    "zelDual_cmd_ofsStartFileTransf": _addr,
    "zelDual_cmd_ofsEndFileTransf": _addr,
    "zelDual_cmd_confWriteFile": _addr + [c_char_p, c_uint8, c_uint32, c_uint8, _u8p],
    "zelDual_cmd_ofsGetMemoryVolume": _addr + [_u32p, _u32p],
    "zelDual_cmd_ofsGetTransStatus": _addr + [_u8p, _u32p, _u32p, _u32p],
    "zelDual_cmd_sendConfigFile": _addr + [_u8p],
    "zelDual_cmd_sendConfigFile_G6": _addr + [_u8p],
    "zelDual_cmd_getFileAttr": [POINTER(ZelDirectoryRecord), c_uint16, _u8p],
    "zelDual_cmd_ofs_freeDirBlock": [POINTER(ZelDirectoryRecord)],
    # Screen settings
    "zelDual_program_setScreenParams_G56": [c_int32, c_uint16, c_uint32],
    # G5 programs
    "zelDual_program_addProgram": [POINTER(ZelProgramHeader_G5)],
    "zelDual_program_changeProgramParams": [POINTER(ZelProgramHeader_G5)],
    "zelDual_program_addPlayPeriodGrp": [POINTER(ZelPlayPeriods_G5)],
    "zelDual_program_AddArea": [c_uint16, POINTER(ZelAreaRecord_G5)],
    "zelDual_program_deleteArea": [c_uint16],
    "zelDual_program_MoveArea": [c_uint16, c_uint32, c_uint32, c_int32, c_int32],
    "zelDual_program_addFrame": [POINTER(ZelFrameHeader_G5), c_char_p],
    "zelDual_program_removeFrame": [],
    "zelDual_program_picturesAreaAddTxt": [c_uint16, c_char_p, c_char_p,
                                           POINTER(TextPageParams_G5)],
    "zelDual_program_fontPath_picturesAreaAddTxt": [c_uint16, c_char_p, c_char_p,
                                                    POINTER(TextPageParams_G5)],
    "zelDual_program_picturesAreaChangeTxt": [c_uint16, c_char_p, POINTER(TextPageParams_G5)],
    "zelDual_program_pictureAreaAddPic": [c_uint16, c_uint16, POINTER(TextPageParams_G5),
                                          c_char_p],
    "zelDual_program_picturesAreaAddFrame": [c_uint16, POINTER(ZelFrameHeader_G5), c_char_p],
    "zelDual_program_pictureAreaRemoveFrame": [c_uint16],
    "zelDual_program_pictureAreaGetOnePage": [c_uint16, c_uint32, POINTER(OnePageResult)],
    "zelDual_program_IntegrateProgramFile": [POINTER(ZelProgramFile_G5)],
    "zelDual_program_timeAreaAddContent": [c_uint16, POINTER(TimeContentRecord)],
    "zelDual_program_fontPath_timeAreaAddContent": [c_uint16, POINTER(TimeContentRecord)],
    "zelDual_program_timeAreaGetOnePage": [c_uint16, POINTER(OnePageResult)],
    "zelDual_program_timeAreaAddAnalogClock": [c_uint16, POINTER(AnalogClockRecord), c_uint32,
                                               POINTER(ZelDialMarkColors)],
    "zelDual_program_timeAreaChangeDialPic": [c_uint16, c_char_p],
    "zelDual_program_timeAreaRemoveDialPic": [c_uint16],
    # G6 programs
    "zelDual_program_addProgram_G6": [POINTER(ZelProgramHeader_G6)],
    "zelDual_program_changeProgramParams_G6": [POINTER(ZelProgramHeader_G6)],
    "zelDual_program_addPlayPeriodGrp_G6": [POINTER(ZelPlayPeriods_G5)],
    "zelDual_program_addArea_G6": [c_uint16, POINTER(ZelAreaRecord_G6)],
    "zelDual_program_deleteArea_G6": [c_uint16],
    "zelDual_program_addFrame_G6": [POINTER(ZelFrameParams_G6), c_char_p],
    "zelDual_program_removeFrame_G6": [],
    "zelDual_program_picturesAreaAddTxt_G6": [c_uint16, c_char_p, c_char_p,
                                              POINTER(TextPageParams_G6)],
    "zelDual_program_fontPath_picturesAreaAddTxt_G6": [c_uint16, c_char_p, c_char_p,
                                                       POINTER(TextPageParams_G6)],
    "zelDual_program_pictureAreaAddPic_G6": [c_uint16, c_uint16, POINTER(TextPageParams_G6),
                                             c_char_p],
    "zelDual_program_pictureAreaEnableSound_G6": [c_uint16, POINTER(ZelSoundParams_G6),
                                                  c_char_p],
    "zelDual_program_pictureAreaDisableSound_G6": [c_uint16],
    "zelDual_program_picturesAreaAddFrame_G6": [c_uint16, POINTER(ZelFrameParams_G6), c_char_p],
    "zelDual_program_backGroundPic_G6": [c_uint16, c_uint16, POINTER(TextPageParams_G6),
                                         c_char_p],
    "zelDual_program_backGroundColor_G6": [c_uint16, POINTER(TextPageParams_G6), c_uint32],
    "zelDual_program_IntegrateProgramFile_G6": [POINTER(ZelProgramFile_G6)],
    "zelDual_program_timeAreaAddContent_G6": [c_uint16, POINTER(TimeContentRecord)],
    "zelDual_program_fontPath_timeAreaAddContent_G6": [c_uint16, POINTER(TimeContentRecord)],
    "zelDual_program_timeAreaAddAnalogClock_G6": [c_uint16, POINTER(AnalogClockRecord),
                                                  c_uint32, POINTER(ZelDialMarkColors)],
    "zelDual_program_timeAreaSetBattleTime_G6": [c_uint16, POINTER(ZelBattleTime_G6)],
    "zelDual_program_timeAreaCancleBattleTime_G6": [c_uint16],
}

def library_path():
    """Where the library is taken from: $ZEL_SDK_DUAL_LIBRARY, what the system's linker
    finds for "zel_sdk_dual", or the soname."""
    given = os.environ.get(ENV_LIBRARY)
    if given:
        return given
    return ctypes.util.find_library("zel_sdk_dual") or SONAME


def load(path=None):
    """Loads the library and declares its functions. Functions missing from an older build
    are left out; ``getattr(lib, name)`` reaches any export without a declaration."""
    lib = ctypes.CDLL(path or library_path())
    for name, args in _PROTOTYPES.items():
        try:
            function = getattr(lib, name)
        except AttributeError:
            continue
        function.argtypes = args
        function.restype = c_int32
    return lib


__all__ = ["ENV_LIBRARY", "SONAME", "library_path", "load"]
