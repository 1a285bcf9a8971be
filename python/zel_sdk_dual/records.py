"""The packed records of the C API as ctypes structures.

Each class matches its C record byte for byte: ``_pack_ = 1``, little-endian, pointers of 8
bytes, the field names of ``zel_sdk_dual.h``.
"""

import ctypes
from ctypes import POINTER, c_char, c_char_p, c_uint8, c_uint16, c_uint32

__all__ = [
    "ZelCrc16Record", "ZelCrc32Record", "ZelProgramFile_G5", "ZelProgramFile_G6",
    "ZelPingRecord", "ZelDirectoryRecord", "TextPageParams_G5", "OnePageResult",
    "TextPageParams_G6", "ZelProgramHeader_G5", "ZelAreaRecord_G5", "ZelPlayPeriods_G5",
    "ZelFrameHeader_G5", "ZelProgramHeader_G6", "ZelAreaRecord_G6", "ZelFrameParams_G6",
    "ZelSoundParams_G6", "ZelBattleTime_G6", "TimeContentRecord", "AnalogClockRecord",
    "ZelDialMarkColors", "ZelTextStyleRecord", "DynamicAreaBaseInfo_5G", "ZelDynamicSound_G6",
    "ZelDynamicAreaParams_G6", "ZelDynamicAreaSetItem_G6", "ZelAreaFrmae_Dynamic_G6",
    "ZelSoundItem_Independ", "SCREEN_ONE_COLOR", "SCREEN_TWO_COLORS", "SCREEN_THREE_COLORS",
    "SCREEN_FULL_COLOR",
]

# E_ScreenColor_G56, a 32-bit value.
SCREEN_ONE_COLOR = 1
SCREEN_TWO_COLORS = 2
SCREEN_THREE_COLORS = 3
SCREEN_FULL_COLOR = 4


class _Packed(ctypes.Structure):
    _pack_ = 1

    def __repr__(self):
        fields = ", ".join(f"{name}={getattr(self, name)!r}" for name, *_ in self._fields_)
        return f"{type(self).__name__}({fields})"


class ZelCrc16Record(_Packed):
    """Data range and result of ``zelDual_get_crc16``."""
    _fields_ = [("data", POINTER(c_uint8)), ("length", c_uint32), ("crc", c_uint16)]


class ZelCrc32Record(_Packed):
    """Data range and result of ``zelDual_get_crc32``."""
    _fields_ = [("data", POINTER(c_uint8)), ("length", c_uint32), ("crc", c_uint32)]


class ZelProgramFile_G5(_Packed):
    """The G5 program file image that integration hands out (freed with
    ``zelDual_program_freeBuffer``)."""
    _fields_ = [("fileName", c_char * 4), ("fileType", c_uint8), ("fileLen", c_uint32),
                ("fileData", POINTER(c_uint8)), ("fileCrc", c_uint32)]


class ZelProgramFile_G6(_Packed):
    """The two G6 file images that integration hands out (freed with
    ``zelDual_program_freeBuffer_G6``)."""
    _fields_ = [("programFileName", c_char * 4), ("programFileType", c_uint8),
                ("programFileLen", c_uint32), ("programFileData", POINTER(c_uint8)),
                ("dataFileName", c_char * 4), ("dataFileType", c_uint8),
                ("dataFileLen", c_uint32), ("dataFileData", POINTER(c_uint8))]


class ZelPingRecord(_Packed):
    """A controller's answer to ping: its type code, 30 controller bytes and its address."""
    _fields_ = [("ControllerType", c_uint16), ("controllerData", c_uint8 * 30),
                ("address", c_char * 20)]


class ZelDirectoryRecord(_Packed):
    """A directory listing of the ordinary file space: entries of 13 bytes."""
    _fields_ = [("kindFilter", c_uint8), ("count", c_uint16), ("entries", POINTER(c_uint8))]


class TextPageParams_G5(_Packed):
    """Page header and text style of the G5 text and picture entries."""
    _fields_ = [("pageByte0", c_uint8), ("displayEffect", c_uint8), ("pageByte2", c_uint8),
                ("pageByte3", c_uint8), ("pageWord4", c_uint16), ("pageByte6", c_uint8),
                ("pageWidth", c_uint16), ("arrMode", c_uint32), ("fontSize", c_uint16),
                ("fontColor", c_uint32), ("fontBold", c_uint8), ("fontItalic", c_uint8),
                ("styleWord12", c_uint32), ("styleWord16", c_uint16),
                ("horizontalAlign", c_uint8), ("verticalAlign", c_uint8)]


class OnePageResult(_Packed):
    """One page of an area as a PNG, for a preview (the area owns the bytes)."""
    _fields_ = [("pageCount", c_uint16), ("pngLength", c_uint32), ("pngData", POINTER(c_uint8))]


class TextPageParams_G6(_Packed):
    """Page header and text style of the G6 text and picture entries."""
    _fields_ = [("pageByte0", c_uint8), ("displayEffect", c_uint8), ("pageByte2", c_uint8),
                ("pageByte3", c_uint8), ("pageWord4", c_uint16), ("pageByte6", c_uint8),
                ("pageWidth", c_uint16), ("pageByte10", c_uint8), ("unused10", c_uint8),
                ("arrMode", c_uint32), ("fontSize", c_uint16), ("fontColor", c_uint32),
                ("fontBold", c_uint8), ("fontItalic", c_uint8), ("styleWord12", c_uint32),
                ("styleWord16", c_uint16), ("horizontalAlign", c_uint8),
                ("verticalAlign", c_uint8)]


class ZelProgramHeader_G5(_Packed):
    """The header of a G5 program; ProgramName goes in as a number and comes back as the four
    characters of the file name."""
    _fields_ = [("FileType", c_uint8), ("ProgramName", c_uint32), ("ProgramStyle", c_uint8),
                ("PlayPeriodFlag", c_uint8), ("ProgramPlayTimes", c_uint8),
                ("ProgramTimeSpan", c_uint16), ("ProgramWeek", c_uint8),
                ("ProgramLifeSpan_sy", c_uint16), ("ProgramLifeSpan_sm", c_uint8),
                ("ProgramLifeSpan_sd", c_uint8), ("ProgramLifeSpan_ey", c_uint16),
                ("ProgramLifeSpan_em", c_uint8), ("ProgramLifeSpan_ed", c_uint8)]


class ZelAreaRecord_G5(_Packed):
    """Where a G5 area stands and what it holds (0 text and pictures, 2 clock)."""
    _fields_ = [("AreaType", c_uint8), ("AreaX", c_uint16), ("AreaY", c_uint16),
                ("AreaWidth", c_uint16), ("AreaHeight", c_uint16)]


class ZelPlayPeriods_G5(_Packed):
    """Up to eight play periods of 6 bytes."""
    _fields_ = [("count", c_uint8), ("periods", (c_uint8 * 6) * 8)]


class ZelFrameHeader_G5(_Packed):
    """Settings of an area frame or a program frame."""
    _fields_ = [("frameMark", c_uint8), ("frameParam1", c_uint8), ("frameParam2", c_uint8),
                ("frameParam3", c_uint8), ("frameParam4", c_uint8), ("frameParam5", c_uint16)]


class ZelProgramHeader_G6(_Packed):
    """The header of a G6 program."""
    _fields_ = [("FileType", c_uint8), ("ProgramName", c_uint32), ("ProgramStyle", c_uint8),
                ("ProgramPriority", c_uint8), ("ProgramPlayTimes", c_uint8),
                ("ProgramTimeSpan", c_uint16), ("SpecialFlag", c_uint8),
                ("CommExtendParaLen", c_uint8), ("ScheduNum", c_uint16),
                ("LoopValue", c_uint16), ("Intergrate", c_uint8),
                ("TimeAttributeNum", c_uint8), ("TimeAttribute0Offset", c_uint16),
                ("ProgramWeek", c_uint8), ("ProgramLifeSpan_sy", c_uint16),
                ("ProgramLifeSpan_sm", c_uint8), ("ProgramLifeSpan_sd", c_uint8),
                ("ProgramLifeSpan_ey", c_uint16), ("ProgramLifeSpan_em", c_uint8),
                ("ProgramLifeSpan_ed", c_uint8)]


class ZelAreaRecord_G6(_Packed):
    """Where a G6 area stands and what it holds (0 text and pictures, 2 clock, 11
    background)."""
    _fields_ = [("AreaType", c_uint8), ("AreaX", c_uint16), ("AreaY", c_uint16),
                ("AreaWidth", c_uint16), ("AreaHeight", c_uint16), ("BackGroundFlag", c_uint8),
                ("Transparency", c_uint8), ("AreaEqual", c_uint8)]


class ZelFrameParams_G6(_Packed):
    """The settings of a G6 area frame or program frame."""
    _fields_ = [("frameParam1", c_uint8), ("frameParam2", c_uint8),
                ("frameParam3", c_uint8 * 3), ("frameParam4", c_uint8)]


class ZelSoundParams_G6(_Packed):
    """The sound settings of a G6 area."""
    _fields_ = [("soundSettings1", c_uint8 * 4), ("soundValue1", c_uint32),
                ("soundValue2", c_uint32), ("soundSettings2", c_uint8 * 4)]


class ZelBattleTime_G6(_Packed):
    """The battle time of a G6 clock area."""
    _fields_ = [("battleWord", c_uint16), ("battleBytes", c_uint8 * 7)]


class TimeContentRecord(_Packed):
    """A digital clock's content. ``fontName`` is read during the call only."""
    _fields_ = [("arrMode", c_uint32), ("fontColor", c_uint32), ("fontName", c_char_p),
                ("fontSize", c_uint16), ("reserved", c_uint8 * 3), ("horizontalAlign", c_uint8),
                ("dateEnable", c_uint8), ("dateFormat", c_uint32), ("timeEnable", c_uint8),
                ("timeFormat", c_uint32), ("weekEnable", c_uint8), ("weekFormat", c_uint32)]


class AnalogClockRecord(_Packed):
    """The hands of an analog clock."""
    _fields_ = [("clockParam1", c_uint16), ("clockParam2", c_uint16), ("clockParam3", c_uint8),
                ("hourHandParam", c_uint8), ("hourHandLength", c_uint8),
                ("hourHandColor", c_uint32), ("minuteHandParam", c_uint8),
                ("minuteHandLength", c_uint8), ("minuteHandColor", c_uint32),
                ("secondHandParam", c_uint8), ("secondHandLength", c_uint8),
                ("secondHandColor", c_uint32)]


class ZelDialMarkColors(_Packed):
    """Colours of a painted dial."""
    _fields_ = [("hourMarkColor", c_uint32), ("minuteMarkColor", c_uint32),
                ("circleColor", c_uint32)]


class ZelTextStyleRecord(_Packed):
    """The style of a text of a dynamic area."""
    _fields_ = [("arrMode", c_uint32), ("fontSize", c_uint16), ("fontColor", c_uint32),
                ("fontBold", c_uint8), ("fontItalic", c_uint8), ("styleWord12", c_uint32),
                ("styleWord16", c_uint16), ("horizontalAlign", c_uint8),
                ("verticalAlign", c_uint8)]


class DynamicAreaBaseInfo_5G(_Packed):
    """One content (1 text, 2 picture) of an item-list dynamic area."""
    _fields_ = [("kind", c_uint8), ("displayEffect", c_uint8), ("pageByte2", c_uint8),
                ("pageByte3", c_uint8), ("pageWord4", c_uint16), ("pageByte6", c_uint8),
                ("style", ZelTextStyleRecord), ("fontName", c_char_p), ("text", c_char_p),
                ("picturePath", c_char_p)]


class ZelDynamicSound_G6(_Packed):
    """The sound of a G6 dynamic area or an independent sound message."""
    _fields_ = [("enable", c_uint8), ("soundSettings1", c_uint8 * 4), ("soundValue1", c_uint32),
                ("soundValue2", c_uint32), ("soundSettings2", c_uint8 * 4),
                ("textLength", c_uint32), ("text", c_char_p)]


class ZelDynamicAreaParams_G6(_Packed):
    """Where a G6 dynamic area stands, and its sound."""
    _fields_ = [("AreaType", c_uint8), ("AreaX", c_uint16), ("AreaY", c_uint16),
                ("AreaWidth", c_uint16), ("AreaHeight", c_uint16), ("unused", c_uint8 * 3),
                ("sound", ZelDynamicSound_G6)]


class ZelDynamicAreaSetItem_G6(_Packed):
    """One area of a set of G6 dynamic areas."""
    _fields_ = [("areaID", c_uint8), ("area", ZelDynamicAreaParams_G6),
                ("page", TextPageParams_G6), ("font", c_char_p), ("content", c_char_p)]


class ZelAreaFrmae_Dynamic_G6(_Packed):
    """The frame of a G6 item-list dynamic area."""
    _fields_ = [("frameFlag", c_uint8), ("frameHeader", c_uint8 * 5), ("unused", c_uint8),
                ("pngPath", c_char_p)]


class ZelSoundItem_Independ(_Packed):
    """One message of the independent sound entries."""
    _fields_ = [("itemByte", c_uint8), ("sound", ZelDynamicSound_G6)]
