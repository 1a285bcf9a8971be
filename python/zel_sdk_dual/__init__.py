"""Python access to zel_sdk_dual, the library that drives G5 and G6 LED panel controllers.

Everything goes through the library's C functions with ctypes; nothing beyond the standard
library is needed. The library is found through $ZEL_SDK_DUAL_LIBRARY, else as the system's
linker finds "zel_sdk_dual", else by its soname.

    from zel_sdk_dual import Controller, ProgramG5, set_screen, SCREEN_TWO_COLORS

    controller = Controller("127.0.0.1", 5005)
    print(controller.ping().ControllerType)
    controller.set_time()
    set_screen(SCREEN_TWO_COLORS, 0x0051)
    with ProgramG5(1) as program:
        program.add_area(1, 0, 0, 64, 32)
        program.add_text(1, "Hello", font_path="/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf")
        with program.integrate() as image:
            controller.write_file(image.name, image.data)

A failed call raises ZelError with the library's result code. The library keeps one program
under construction per process, owned by the thread that started it: a ProgramG5 or ProgramG6
deletes it when its ``with`` block ends, and the file images that integration hands out are
given back to the library when theirs ends.
"""

import ctypes
import threading

from . import _native
from .records import *  # noqa: F401,F403  (the records are part of the package's interface)
from .records import (TextPageParams_G5, TextPageParams_G6, ZelAreaRecord_G5, ZelAreaRecord_G6,
                      ZelDirectoryRecord, ZelPingRecord, ZelProgramFile_G5, ZelProgramFile_G6,
                      ZelProgramHeader_G5, ZelProgramHeader_G6)

# The library's result codes (besides 0, success, and the controllers' own positive codes).
ANSWER_TOO_LONG = 1
FAILURE = -1
HEADER_CHECK = -2
BODY_CRC = -3
UNKNOWN_HEADER_VERSION = -4
UNEXPECTED_ANSWER = -5

_MEANINGS = {
    ANSWER_TOO_LONG: "the answer was longer than the buffer",
    FAILURE: "failure (transport, time-out, bad frame or bad argument)",
    HEADER_CHECK: "the answer's header check failed",
    BODY_CRC: "the answer's body CRC failed",
    UNKNOWN_HEADER_VERSION: "the answer's header version is unknown",
    UNEXPECTED_ANSWER: "an answer came, but not the one expected",
}


class ZelError(Exception):
    """A library call that did not give 0. ``code`` is its result: a negative value of the
    library's own, 1 for a too long answer, or a controller's error code."""

    def __init__(self, function, code):
        self.function = function
        self.code = code
        meaning = _MEANINGS.get(code, "error code reported by the controller")
        super().__init__(f"{function} gave {code}: {meaning}")


_lib = None
_lib_lock = threading.Lock()


def library():
    """The loaded library (loaded on first use), with its functions declared."""
    global _lib
    with _lib_lock:
        if _lib is None:
            _lib = _native.load()
        return _lib


def _call(name, *args):
    result = getattr(library(), name)(*args)
    if result != 0:
        raise ZelError(name, result)
    return result


def _text(value):
    """Text for the library: str goes as GBK, bytes as they are, None as a null pointer."""
    if value is None or isinstance(value, bytes):
        return value
    return value.encode("gbk")


def _buffer(data):
    """A byte buffer the library may read (and the caller keep alive during the call)."""
    data = bytes(data)
    return (ctypes.c_uint8 * max(len(data), 1)).from_buffer_copy(data or b"\0")


def set_screen(color, controller_type, double_color=1):
    """Sets the process-wide screen: colour class (SCREEN_*), controller type code and the
    plane order of a two-colour screen. Programs are rendered with the settings of the moment
    they are integrated."""
    _call("zelDual_program_setScreenParams_G56", color, controller_type, double_color)


def set_packet_length(length):
    """Sets the block size of file writes (1024 by default)."""
    _call("zelDual_set_packetLen", length)


class Controller:
    """A controller on TCP at ``address`` (dotted text) and ``port`` (5005 on a real one).

    Each call opens a connection of its own, learns the controller's type, sends one command
    and closes again, as the library does."""

    def __init__(self, address, port=5005):
        self.address = address
        self.port = port

    def _cmd(self, name, *args):
        return _call(name, _text(self.address), self.port, *args)

    def ping(self):
        """The controller's ping record (ControllerType, controllerData, address)."""
        record = ZelPingRecord()
        self._cmd("zelDual_cmd_tcpPing", ctypes.byref(record))
        return record

    def set_time(self):
        """Sets the controller's clock to this host's local time now."""
        self._cmd("zelDual_cmd_check_time")

    def reset(self):
        """Restarts the controller."""
        self._cmd("zelDual_cmd_sysReset")

    def power(self, on):
        """Switches the screen on or off at once."""
        self._cmd("zelDual_cmd_coerceOnOff", 1 if on else 0)

    def read_controller_id(self):
        """The controller's 8-byte identifier."""
        out = (ctypes.c_uint8 * 8)()
        self._cmd("zelDual_cmd_readControllerID", out)
        return bytes(out)

    def status(self):
        """The controller's 61-byte status record."""
        out = (ctypes.c_uint8 * 61)()
        self._cmd("zelDual_cmd_check_controllerStatus", out)
        return bytes(out)

    def set_password(self, old, new):
        """Changes the password; six bytes of each are sent (shorter ones padded with zeros)."""
        self._cmd("zelDual_cmd_setPassword", bytes(_text(old)).ljust(6, b"\0"),
                  bytes(_text(new)).ljust(6, b"\0"))

    def delete_password(self, password):
        """Removes the password (six bytes)."""
        self._cmd("zelDual_cmd_deletePassword", bytes(_text(password)).ljust(6, b"\0"))

    def write_file(self, name, data, file_type=0, overwrite=True):
        """Writes a file of the ordinary space (a program image) in blocks."""
        name = _text(name)
        if len(name) != 4:
            raise ValueError("controller file names have four characters")
        data = bytes(data)
        self._cmd("zelDual_cmd_ofsWriteFile", name, file_type, len(data),
                  1 if overwrite else 0, _buffer(data))

    def send(self, images):
        """Writes what ProgramG5.integrate or ProgramG6.integrate gave: every file in it, with
        its type, overwriting files of those names."""
        for name, file_type, data in images.files():
            self.write_file(name, data, file_type)

    def list_files(self, kind_filter=0xFF):
        """The ordinary file space as (name, type, length, check) tuples."""
        record = ZelDirectoryRecord(kindFilter=kind_filter)
        try:
            self._cmd("zelDual_cmd_ofsReedDirBlock", ctypes.byref(record))
            entries = []
            for i in range(record.count):
                raw = bytes(record.entries[i * 13:(i + 1) * 13])
                entries.append((raw[0:4].decode("latin-1"), raw[4],
                                int.from_bytes(raw[5:9], "little"),
                                int.from_bytes(raw[9:13], "little")))
            return entries
        finally:
            if record.entries:
                library().zelDual_cmd_ofs_freeDirBlock(ctypes.byref(record))

    def delete_files(self, *names):
        """Deletes files of the ordinary space by their four-character names."""
        joined = b"".join(_text(n) for n in names)
        self._cmd("zelDual_cmd_ofsDeleteFormatFile", len(names), joined)


def _text_params(cls, params, kwargs):
    if params is not None:
        return params
    p = cls(arrMode=1, fontSize=12, fontColor=1, horizontalAlign=1, verticalAlign=1)
    for key, value in kwargs.items():
        setattr(p, key, value)
    return p


class _Program:
    """What the G5 and G6 programs share: the one program under construction, the strings
    the library keeps pointers to, and deletion at the end."""

    _delete = None
    _suffix = ""
    _params = None

    def __init__(self):
        self._kept = []  # picture paths: the library reads them at integration
        self._open = True

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()
        return False

    def close(self):
        """Deletes the program under construction (also done at the end of ``with``)."""
        if self._open:
            self._open = False
            getattr(library(), self._delete)()
            self._kept.clear()

    def _keep(self, text):
        value = _text(text)
        self._kept.append(value)
        return value

    def add_text(self, area_id, text, font_name=None, font_path=None, params=None, **style):
        """Sets an area's text, in a font family (``font_name``) or from a font file
        (``font_path``). ``params`` is a TextPageParams record; without one, ``style`` sets
        its fields (arrMode, fontSize, fontColor, horizontalAlign, ...) over a default of
        multi-line, 12 points, red, centred."""
        params = _text_params(self._params, params, style)
        if font_path is not None:
            name, font = "zelDual_program_fontPath_picturesAreaAddTxt", font_path
        else:
            name, font = "zelDual_program_picturesAreaAddTxt", font_name or "DejaVu Sans"
        _call(name + self._suffix, area_id, _text(text), _text(font), ctypes.byref(params))

    def add_picture(self, area_id, path, picture_id=0, params=None, **header):
        """Adds the PNG at ``path`` to an area's pictures (the library reads it at
        integration, so the file must stay until then)."""
        params = _text_params(self._params, params, header)
        _call("zelDual_program_pictureAreaAddPic" + self._suffix, area_id, picture_id,
              ctypes.byref(params), self._keep(str(path)))


class ProgramG5(_Program):
    """A G5 program under construction: one file image once integrated.

    ``number`` names the file ("P001" for 1); ``header`` fields override the defaults of a
    program played once, every day, without end of life."""

    _delete = "zelDual_program_deleteProgram"
    _params = TextPageParams_G5

    def __init__(self, number, **header):
        super().__init__()
        self.header = ZelProgramHeader_G5(ProgramName=number, ProgramPlayTimes=1,
                                          ProgramWeek=0xFF, ProgramLifeSpan_sy=0xFFFF,
                                          ProgramLifeSpan_ey=0xFFFF)
        for key, value in header.items():
            setattr(self.header, key, value)
        library().zelDual_program_deleteProgram()  # a fresh program, whatever came before
        _call("zelDual_program_addProgram", ctypes.byref(self.header))

    @property
    def name(self):
        """The program's file name, as the library made it ("P001")."""
        return self.header.ProgramName.to_bytes(4, "little").decode("latin-1")

    def add_area(self, area_id, x, y, width, height, area_type=0):
        """Adds an area: type 0 text and pictures, 2 a clock."""
        record = ZelAreaRecord_G5(AreaType=area_type, AreaX=x, AreaY=y, AreaWidth=width,
                                  AreaHeight=height)
        _call("zelDual_program_AddArea", area_id, ctypes.byref(record))

    def integrate(self):
        """Renders the program with the screen settings of now: the file image, to be used
        in a ``with`` block (the library's buffer is freed at its end)."""
        image = ProgramImageG5()
        _call("zelDual_program_IntegrateProgramFile", ctypes.byref(image.record))
        return image


class ProgramG6(_Program):
    """A G6 program under construction: a program file and a data file once integrated."""

    _delete = "zelDual_program_deleteProgram_G6"
    _suffix = "_G6"
    _params = TextPageParams_G6

    def __init__(self, number, **header):
        super().__init__()
        self.header = ZelProgramHeader_G6(ProgramName=number, ProgramPlayTimes=1,
                                          ProgramWeek=0xFF, ProgramLifeSpan_sy=0xFFFF,
                                          ProgramLifeSpan_ey=0xFFFF)
        for key, value in header.items():
            setattr(self.header, key, value)
        library().zelDual_program_deleteProgram_G6()
        _call("zelDual_program_addProgram_G6", ctypes.byref(self.header))

    def add_area(self, area_id, x, y, width, height, area_type=0, **extra):
        """Adds an area: type 0 text and pictures, 2 a clock, 11 a background."""
        record = ZelAreaRecord_G6(AreaType=area_type, AreaX=x, AreaY=y, AreaWidth=width,
                                  AreaHeight=height, **extra)
        _call("zelDual_program_addArea_G6", area_id, ctypes.byref(record))

    def integrate(self):
        """Renders the program: its two files, to be used in a ``with`` block."""
        images = ProgramImagesG6()
        _call("zelDual_program_IntegrateProgramFile_G6", ctypes.byref(images.record))
        return images


def _bytes_at(pointer, length):
    return ctypes.string_at(pointer, length) if pointer else b""


class ProgramImageG5:
    """The G5 file image that integration handed out. ``record`` is the C record; the
    library's buffer is given back at the end of the ``with`` block (or by ``free``)."""

    def __init__(self):
        self.record = ZelProgramFile_G5()

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.free()
        return False

    @property
    def name(self):
        return self.record.fileName.decode("latin-1")

    @property
    def data(self):
        """A copy of the image's bytes."""
        return _bytes_at(self.record.fileData, self.record.fileLen)

    def files(self):
        """The image as [(name, type, bytes)]."""
        return [(self.name, self.record.fileType, self.data)]

    def free(self):
        if self.record.fileData:
            library().zelDual_program_freeBuffer(ctypes.byref(self.record))


class ProgramImagesG6:
    """The G6 program file and data file that integration handed out; given back at the end
    of the ``with`` block (or by ``free``)."""

    def __init__(self):
        self.record = ZelProgramFile_G6()

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.free()
        return False

    def files(self):
        """The program file and the data file as [(name, type, bytes)]."""
        r = self.record
        return [(r.programFileName.decode("latin-1"), r.programFileType,
                 _bytes_at(r.programFileData, r.programFileLen)),
                (r.dataFileName.decode("latin-1"), r.dataFileType,
                 _bytes_at(r.dataFileData, r.dataFileLen))]

    def free(self):
        if self.record.programFileData or self.record.dataFileData:
            library().zelDual_program_freeBuffer_G6(ctypes.byref(self.record))
