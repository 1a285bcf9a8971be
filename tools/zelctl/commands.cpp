#include "commands.h"

#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <unistd.h>

#include "program_json.h"
#include "progress.h"
#include "zel_sdk_dual.h"

namespace zelctl {
namespace {

namespace fs = std::filesystem;

constexpr uint32_t kDefaultPacketLen = 1024; // the library's block size until it is set
constexpr std::size_t kBrightnessTableBytes = 49;
constexpr std::size_t kStatusBytes = 61;
constexpr std::size_t kControllerIdBytes = 8;
constexpr std::size_t kDirEntryBytes = 13;
constexpr std::size_t kReadRoom = 16 * 1024 * 1024; // a controller's file fits here

const Target &tcp_only(const Context &c, const char *what) {
    if (c.options.target.is_serial())
        throw UsageError(std::string(what) + " has no serial form: give --host");
    return c.options.target;
}

std::string type_text(uint16_t type) {
    char buffer[8];
    std::snprintf(buffer, sizeof buffer, "0x%04X", type);
    return buffer;
}

void report_ping(Context &c, const ZelPingRecord &record) {
    const std::string address(record.address, strnlen(record.address, sizeof record.address));
    const char *family = family_of(record.ControllerType) == Family::G6 ? "G6" : "G5";
    c.report.set("controllerType", type_text(record.ControllerType));
    c.report.set("family", family);
    c.report.set("address", address);
    c.report.say("controller type " + type_text(record.ControllerType) + " (" + family + ")" +
                 (address.empty() ? "" : " at " + address));
}

// The four characters of a controller file name.
std::string file_name(const std::string &name) {
    if (name.size() != 4) throw UsageError("file names have four characters: \"" + name + "\"");
    return name;
}

std::vector<uint8_t> read_local(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw ProgramError(path + ": cannot be read");
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Writes one file to the controller's ordinary (or configuration) file space, with a bar.
int32_t write_file(Context &c, const std::string &name, uint8_t type,
                   const std::vector<uint8_t> &data, bool conf) {
    const Target &t = c.options.target;
    const auto length = static_cast<uint32_t>(data.size());
    const uint32_t block =
        conf ? 1024 : (c.options.packetLen ? c.options.packetLen : kDefaultPacketLen);
    const auto mode = static_cast<uint8_t>(c.options.mode);
    const auto write = [&]() -> int32_t {
        if (conf) {
            return t.is_serial() ? zelDual_cmd_uart_confWriteFile(t.serial.c_str(), t.speed_index(),
                                                                  name.c_str(), type, length, mode,
                                                                  data.data())
                                 : zelDual_cmd_confWriteFile(t.host.c_str(), t.port, name.c_str(),
                                                             type, length, mode, data.data());
        }
        return t.is_serial()
                   ? zelDual_cmd_uart_ofsWriteFile(t.serial.c_str(), t.speed_index(), name.c_str(),
                                                   type, length, mode, data.data())
                   : zelDual_cmd_ofsWriteFile(t.host.c_str(), t.port, name.c_str(), type, length,
                                              mode, data.data());
    };
    return run_with_progress(name, wire_bytes_of_write(data.data(), length, block), length,
                             c.progress, write);
}

// ---- the commands ---------------------------------------------------------------------------

int32_t ping(Context &c) {
    const Target &t = c.options.target;
    ZelPingRecord record{};
    const int32_t r = t.is_serial() ? zelDual_cmd_uart_searchController(&record, t.serial.c_str())
                                    : zelDual_cmd_tcpPing(t.host.c_str(), t.port, &record);
    if (r == 0) report_ping(c, record);
    return r;
}

int32_t search(Context &c) {
    const Target &t = c.options.target;
    ZelPingRecord record{};
    int32_t r = 0;
    if (t.is_serial()) {
        r = zelDual_cmd_uart_searchController(&record, t.serial.c_str());
    } else {
        r = c.options.udp ? zelDual_cmd_udpPing(&record) : zelDual_cmd_searchController(&record);
    }
    if (r == 0) report_ping(c, record);
    return r;
}

// The controllers have no command that reads their clock: this shows the time stamp that
// `time set` with the same zone sends now, field by field.
int32_t time_get(Context &c) {
    if (!c.options.tz.empty()) ::setenv("TZ", c.options.tz.c_str(), 1);
    ::tzset();
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
    c.report.set("time", text);
    c.report.set("weekday", local.tm_wday);
    c.report.say(std::string(text) + " (weekday " + std::to_string(local.tm_wday) + ")");
    return 0;
}

int32_t time_set(Context &c) {
    const Target &t = tcp_only(c, "time");
    if (!c.options.tz.empty()) ::setenv("TZ", c.options.tz.c_str(), 1);
    ::tzset();
    const int32_t r = zelDual_cmd_check_time(t.host.c_str(), t.port);
    if (r == 0) time_get(c);
    return r;
}

int32_t brightness(Context &c) {
    const Target &t = tcp_only(c, "brightness");
    std::vector<uint8_t> table;
    if (!c.options.tableFile.empty()) {
        table = read_local(c.options.tableFile);
    } else if (const auto bytes = parse_hex(c.options.table)) {
        table = *bytes;
    }
    if (table.size() != kBrightnessTableBytes)
        throw UsageError("the brightness table is 49 bytes (as hexadecimal text or a file)");
    return zelDual_cmd_setBrightness(t.host.c_str(), t.port, table.data());
}

int32_t power(Context &c, uint8_t on) {
    const Target &t = tcp_only(c, "power");
    return zelDual_cmd_coerceOnOff(t.host.c_str(), t.port, on);
}

int32_t lock(Context &c) {
    const Target &t = c.options.target;
    const auto first = static_cast<uint8_t>(c.options.first);
    const auto second = static_cast<uint8_t>(c.options.second);
    if (!c.options.programLock) {
        tcp_only(c, "lock (of the screen)");
        return zelDual_cmd_screenLock(t.host.c_str(), t.port, first, second);
    }
    const auto id = parse_hex(c.options.lockId);
    if (!id || id->size() != 4) throw UsageError("--id is four bytes in hexadecimal");
    if (!t.is_serial())
        return zelDual_cmd_programLock(t.host.c_str(), t.port, first, second, id->data(),
                                       c.options.lockValue);
    // Over a serial line the G6 controllers take the lock in their own, longer form.
    ZelPingRecord record{};
    const int32_t r = zelDual_cmd_uart_searchController(&record, t.serial.c_str());
    if (r != 0) return r;
    return family_of(record.ControllerType) == Family::G6
               ? zelDual_cmd_uart_programLock_6G(t.serial.c_str(), t.speed_index(), first, second,
                                                 id->data(), c.options.lockValue)
               : zelDual_cmd_uart_programLock(t.serial.c_str(), t.speed_index(), first, second,
                                              id->data(), c.options.lockValue);
}

int32_t status(Context &c) {
    const Target &t = tcp_only(c, "status");
    uint8_t id[kControllerIdBytes] = {};
    int32_t r = zelDual_cmd_readControllerID(t.host.c_str(), t.port, id);
    if (r != 0) return r;
    uint8_t record[kStatusBytes] = {};
    r = zelDual_cmd_check_controllerStatus(t.host.c_str(), t.port, record);
    if (r != 0) return r;
    c.report.set("controllerId", hex_bytes(id, sizeof id));
    c.report.set("status", hex_bytes(record, sizeof record));
    c.report.say("controller id: " + hex_bytes(id, sizeof id));
    c.report.say("status record (61 bytes, the controller's own layout):");
    for (std::size_t i = 0; i < sizeof record; i += 16)
        c.report.say("  " + hex_bytes(record + i, std::min<std::size_t>(16, sizeof record - i)));
    return 0;
}

int32_t files_list(Context &c) {
    const Target &t = c.options.target;
    ZelDirectoryRecord dir{};
    dir.kindFilter = static_cast<uint8_t>(c.options.kind);
    const int32_t r =
        t.is_serial() ? zelDual_cmd_uart_ofsReedDirBlock(t.serial.c_str(), t.speed_index(), &dir)
                      : zelDual_cmd_ofsReedDirBlock(t.host.c_str(), t.port, &dir);
    Json entries = Json::array();
    if (r == 0) {
        for (uint16_t i = 0; i < dir.count; ++i) {
            uint8_t entry[kDirEntryBytes] = {};
            if (zelDual_cmd_getFileAttr(&dir, i, entry) != 0) break;
            std::string name;
            for (int k = 0; k < 4; ++k)
                name.push_back(entry[k] >= 0x20 && entry[k] < 0x7F ? static_cast<char>(entry[k])
                                                                   : '.');
            entries.push_back(Json{{"name", name}, {"entry", hex_bytes(entry, sizeof entry)}});
            c.report.say(name + "  " + hex_bytes(entry, sizeof entry));
        }
        if (dir.count == 0) c.report.say("no files");
    }
    // The listing hands its block over whatever the result.
    zelDual_cmd_ofs_freeDirBlock(&dir);
    c.report.set("files", entries);
    return r;
}

int32_t files_read(Context &c) {
    const Target &t = c.options.target;
    std::string name = file_name(c.options.names.at(0));
    std::vector<uint8_t> out(kReadRoom);
    int32_t r = 0;
    if (c.options.conf) {
        uint32_t first = 0, second = 0;
        r = t.is_serial() ? zelDual_cmd_uart_confStartReedFile(t.serial.c_str(), t.speed_index(),
                                                               name.data(), &first, &second)
                          : zelDual_cmd_confStartReedFile(t.host.c_str(), t.port, name.data(),
                                                          &first, &second);
        if (r != 0) return r;
        r = t.is_serial()
                ? zelDual_cmd_uart_confReedFileBlock(t.serial.c_str(), t.speed_index(),
                                                     name.c_str(), out.data())
                : zelDual_cmd_confReedFileBlock(t.host.c_str(), t.port, name.c_str(), out.data());
    } else {
        r = t.is_serial() ? zelDual_cmd_uart_ofsStartReedFile(t.serial.c_str(), t.speed_index(),
                                                              name.data(), 0, 0)
                          : zelDual_cmd_ofsStartReedFile(t.host.c_str(), t.port, name.data(), 0, 0);
        if (r != 0) return r;
        r = t.is_serial()
                ? zelDual_cmd_uart_ofsReedFileBlock(t.serial.c_str(), t.speed_index(), name.c_str(),
                                                    out.data())
                : zelDual_cmd_ofsReedFileBlock(t.host.c_str(), t.port, name.c_str(), out.data());
    }
    if (r == 0) c.report.say(name + ": read acknowledged; the controller sent no data");
    return r;
}

int32_t files_delete(Context &c) {
    const Target &t = c.options.target;
    std::string names;
    for (const auto &n : c.options.names)
        names += file_name(n);
    const auto count = static_cast<uint16_t>(c.options.names.size());
    if (c.options.conf) {
        return t.is_serial()
                   ? zelDual_cmd_uart_confDeleteFormatFile(t.serial.c_str(), t.speed_index(), count,
                                                           names.c_str())
                   : zelDual_cmd_confDeleteFormatFile(t.host.c_str(), t.port, count, names.c_str());
    }
    return t.is_serial()
               ? zelDual_cmd_uart_ofsDeleteFormatFile(t.serial.c_str(), t.speed_index(), count,
                                                      names.c_str())
               : zelDual_cmd_ofsDeleteFormatFile(t.host.c_str(), t.port, count, names.c_str());
}

int32_t files_write(Context &c) {
    const std::string name = file_name(c.options.names.at(0));
    const auto data = read_local(c.options.file);
    const int32_t r =
        write_file(c, name, static_cast<uint8_t>(c.options.fileType), data, c.options.conf);
    c.report.set("file", Json{{"name", name}, {"bytes", data.size()}});
    if (r == 0) c.report.say(name + " written, " + std::to_string(data.size()) + " bytes");
    return r;
}

// The library renders into its working directory ("0.png", "dataFantx.bin", ...): send-program
// builds in a scratch folder, so that the caller's folder stays as it was.
class ScratchDir {
  public:
    ScratchDir() {
        std::string pattern = (fs::temp_directory_path() / "zelctl-XXXXXX").string();
        if (::mkdtemp(pattern.data()) == nullptr) throw ProgramError("no scratch folder");
        m_path = pattern;
        m_previous = fs::current_path();
        fs::current_path(m_path);
    }
    ~ScratchDir() {
        std::error_code ec;
        fs::current_path(m_previous, ec);
        fs::remove_all(m_path, ec);
    }
    ScratchDir(const ScratchDir &) = delete;
    ScratchDir &operator=(const ScratchDir &) = delete;

  private:
    fs::path m_path;
    fs::path m_previous;
};

int32_t send_program(Context &c) {
    const Target &t = c.options.target;
    const fs::path source = fs::absolute(c.options.file);
    const Json description = read_description(source.string());
    uint16_t type = 0;
    if (!description_names_type(description, type)) {
        ZelPingRecord record{};
        const int32_t r = t.is_serial()
                              ? zelDual_cmd_uart_searchController(&record, t.serial.c_str())
                              : zelDual_cmd_tcpPing(t.host.c_str(), t.port, &record);
        if (r != 0) return r;
        type = record.ControllerType;
    }
    BuiltProgram built;
    {
        ScratchDir scratch;
        built = build_program(description, source.parent_path().string(), type);
    }
    c.report.set("family", built.family == Family::G6 ? "G6" : "G5");
    c.report.set("controllerType", type_text(type));
    c.report.set("areas", built.areas);
    Json files = Json::array();
    int32_t r = 0;
    for (const FileImage &f : built.files) {
        r = write_file(c, f.name, f.type, f.data, false);
        files.push_back(Json{{"name", f.name}, {"bytes", f.data.size()}, {"written", r == 0}});
        if (r != 0) break;
        c.report.say(f.name + " written, " + std::to_string(f.data.size()) + " bytes");
    }
    c.report.set("files", files);
    return r;
}

// The controller's family: --family, or a ping (the line's probe over a serial line).
int32_t dynamic_family(Context &c, Family &family) {
    const Target &t = c.options.target;
    if (!c.options.family.empty()) {
        family = c.options.family == "G6" ? Family::G6 : Family::G5;
        return 0;
    }
    ZelPingRecord record{};
    const int32_t r = t.is_serial() ? zelDual_cmd_uart_searchController(&record, t.serial.c_str())
                                    : zelDual_cmd_tcpPing(t.host.c_str(), t.port, &record);
    if (r == 0) family = family_of(record.ControllerType);
    return r;
}

int32_t delete_dynamic(Context &c, Family family) {
    const Target &t = c.options.target;
    const auto id = static_cast<uint8_t>(c.options.deleteArea);
    c.report.set("deleted", c.options.deleteArea == 255 ? Json("all") : Json(id));
    if (family == Family::G6) {
        return t.is_serial()
                   ? zelDual_dynamicArea_DelArea_6G_Serial(t.serial.c_str(), t.speed_index(), id)
                   : zelDual_dynamicArea_DelArea_6G(t.host.c_str(), t.port, id);
    }
    // The G5 delete takes a signed number: 255 goes out as -1, every area.
    const auto number = static_cast<int8_t>(id);
    return t.is_serial()
               ? zelDual_dynamicArea_DelArea_G5_Serial(t.serial.c_str(), t.speed_index(), number)
               : zelDual_dynamicArea_DelArea_5G(t.host.c_str(), t.port, number);
}

// Adds (or replaces) a dynamic area holding one text, or deletes one with --delete.
int32_t send_text(Context &c) {
    const Options &o = c.options;
    const Target &t = o.target;
    const bool deleting = o.deleteArea >= 0;
    if (!deleting) {
        if (o.text.empty()) throw UsageError("send-text needs a TEXT (or --delete ID)");
        if (o.width == 0 || o.height == 0) throw UsageError("send-text needs --width and --height");
        if (!o.font.empty() && !o.fontFile.empty())
            throw UsageError("give --font or --font-file, not both");
    }
    Family family = Family::G5;
    int32_t r = dynamic_family(c, family);
    if (r != 0) return r;
    c.report.set("family", family == Family::G6 ? "G6" : "G5");
    if (deleting) {
        r = delete_dynamic(c, family);
        if (r == 0) c.report.say("dynamic area " + std::to_string(o.deleteArea) + " deleted");
        return r;
    }
    // A family name reaches the library as GBK text; a font file's path as it is.
    const std::string font = !o.fontFile.empty()
                                 ? fs::absolute(o.fontFile).string()
                                 : to_gbk(o.font.empty() ? "DejaVu Sans" : o.font, "--font");
    const std::string text = to_gbk(o.text, "TEXT");
    const uint32_t colour = parse_colour(o.color, "--color");
    const auto screen = static_cast<E_ScreenColor_G56>(o.screenColor);
    const auto area = static_cast<uint8_t>(o.area);
    const auto x = static_cast<uint16_t>(o.x), y = static_cast<uint16_t>(o.y);
    const auto w = static_cast<uint16_t>(o.width), h = static_cast<uint16_t>(o.height);
    const auto effect = static_cast<uint8_t>(o.effect);
    const auto size = static_cast<uint16_t>(o.size);
    // Rendering leaves the library's debugging pictures ("0.png", ...) in the working folder.
    ScratchDir scratch;
    if (family == Family::G6) {
        ZelDynamicAreaParams_G6 where{};
        where.AreaType = 16;
        where.AreaX = x;
        where.AreaY = y;
        where.AreaWidth = w;
        where.AreaHeight = h;
        TextPageParams_G6 page{};
        page.displayEffect = effect;
        page.arrMode = 1;
        page.fontSize = size;
        page.fontColor = colour;
        page.horizontalAlign = 1;
        page.verticalAlign = 1;
        r = t.is_serial()
                ? zelDual_dynamicArea_AddAreaTxtDetails_6G_Serial(t.serial.c_str(), t.speed_index(),
                                                                  screen, area, &where, &page,
                                                                  font.c_str(), text.c_str())
                : zelDual_dynamicArea_AddAreaTxtDetails_6G(t.host.c_str(), t.port, screen, area,
                                                           &where, &page, font.c_str(),
                                                           text.c_str());
    } else {
        ZelTextStyleRecord style{};
        style.arrMode = 1;
        style.fontSize = size;
        style.fontColor = colour;
        style.horizontalAlign = 1;
        style.verticalAlign = 1;
        const ZelFrameHeader_G5 frame{}; // a G5 dynamic area has no frame
        // The head's first byte is the area's number; the head word 5 and the empty list are
        // the controller's defaults.
        constexpr uint16_t kHeadWord = 5;
        r = t.is_serial()
                ? zelDual_dynamicArea_AddAreaWithTxt_5G_Serial(
                      t.serial.c_str(), t.speed_index(), screen, area, 0, kHeadWord, 1, 0, nullptr,
                      0, x, y, w, h, frame, effect, 0, 0, 0, 0, style, font.c_str(), text.c_str())
                : zelDual_dynamicArea_AddAreaWithTxt_5G(
                      t.host.c_str(), t.port, screen, area, 0, kHeadWord, 1, 0, nullptr, 0, x, y, w,
                      h, frame, effect, 0, 0, 0, 0, style, font.c_str(), text.c_str());
    }
    c.report.set("area", area);
    if (r == 0) c.report.say("dynamic area " + std::to_string(area) + " shows \"" + o.text + "\"");
    return r;
}

// ---- the table ------------------------------------------------------------------------------

struct CommandEntry {
    const char *parent; // "" for a command of its own
    const char *name;
    const char *help;
    std::function<void(CLI::App &, Options &)> args;
    std::function<int32_t(Context &)> run;
};

const std::map<std::string, std::string> kGroups = {
    {"time", "The controller's clock"},
    {"power", "Switch the screen on or off at once"},
    {"files", "The controller's file system"},
};

std::vector<CommandEntry> command_table() {
    const auto none = [](CLI::App &, Options &) {};
    const auto names = [](CLI::App &a, Options &o) {
        a.add_option("NAME", o.names, "file names of four characters")->required();
        a.add_flag("--conf", o.conf, "the configuration file space instead of the ordinary one");
    };
    return {
        {"", "ping", "Ask the controller its type (over a serial line: 9600, then 57600 bit/s)",
         none, ping},
        {"", "search",
         "Look for a controller: Wi-Fi module, access point, UDP broadcast (or the serial line)",
         [](CLI::App &a, Options &o) { a.add_flag("--udp", o.udp, "only a UDP broadcast ping"); },
         search},
        {"time", "get",
         "Show the time stamp `time set` sends now (the controllers have no command that reads "
         "their clock)",
         [](CLI::App &a, Options &o) {
             a.add_option("--tz", o.tz, "time zone, such as Asia/Shanghai or UTC");
         },
         time_get},
        {"time", "set", "Set the controller's clock to the time now in a time zone",
         [](CLI::App &a, Options &o) {
             a.add_option("--tz", o.tz, "time zone, such as Asia/Shanghai or UTC")->required();
         },
         time_set},
        {"time", "sync", "Set the controller's clock to this machine's local time", none, time_set},
        {"", "brightness",
         "Send the 49-byte brightness table (the controller's own layout) as it stands",
         [](CLI::App &a, Options &o) {
             a.add_option("TABLE", o.table, "49 bytes in hexadecimal");
             a.add_option("--file", o.tableFile, "a file of 49 bytes instead");
         },
         brightness},
        {"power", "on", "Switch the screen on", none, [](Context &c) { return power(c, 1); }},
        {"power", "off", "Switch the screen off", none, [](Context &c) { return power(c, 0); }},
        {"", "lock", "Lock or unlock the screen, or with --program a program",
         [](CLI::App &a, Options &o) {
             a.add_option("FIRST", o.first, "first lock byte (the controller's meaning)")
                 ->required()
                 ->check(CLI::Range(0, 255));
             a.add_option("SECOND", o.second, "second lock byte")
                 ->required()
                 ->check(CLI::Range(0, 255));
             a.add_flag("--program", o.programLock, "lock a program instead of the screen");
             a.add_option("--id", o.lockId, "the program lock's four bytes, hexadecimal");
             a.add_option("--value", o.lockValue, "the program lock's 32-bit value");
         },
         lock},
        {"", "status", "Read the controller's identifier and its 61-byte status record", none,
         status},
        {"files", "list", "List the ordinary file space",
         [](CLI::App &a, Options &o) {
             a.add_option("--kind", o.kind, "the kind filter byte of the listing (default 0)")
                 ->check(CLI::Range(0, 255));
         },
         files_list},
        {"files", "read", "Open a file and read it block by block", names, files_read},
        {"files", "delete", "Delete files", names, files_delete},
        {"files", "write", "Write a local file to the controller, with a progress bar",
         [](CLI::App &a, Options &o) {
             a.add_option("NAME", o.names, "the file's name on the controller, four characters")
                 ->required()
                 ->expected(1);
             a.add_option("FILE", o.file, "the local file")->required();
             a.add_option("--type", o.fileType, "file type byte (default 0)")
                 ->check(CLI::Range(0, 255));
             a.add_option("--mode", o.mode, "write mode byte (default 1, overwrite)")
                 ->check(CLI::Range(0, 255));
             a.add_flag("--conf", o.conf, "the configuration file space");
         },
         files_write},
        {"", "send-program",
         "Build the program a JSON file describes and write its files, with a progress bar",
         [](CLI::App &a, Options &o) {
             a.add_option("FILE", o.file, "the program description (JSON)")->required();
         },
         send_program},
        {"", "send-text",
         "Show a text in a dynamic area at once, without a program (or delete an area)",
         [](CLI::App &a, Options &o) {
             a.add_option("TEXT", o.text, "the text (UTF-8)");
             a.add_option("--area", o.area, "the dynamic area's number (default 1)")
                 ->check(CLI::Range(0, 255));
             a.add_option("--x", o.x, "left edge, pixels")->check(CLI::Range(0, 65535));
             a.add_option("--y", o.y, "top edge, pixels")->check(CLI::Range(0, 65535));
             a.add_option("--width", o.width, "width, pixels")->check(CLI::Range(1, 65535));
             a.add_option("--height", o.height, "height, pixels")->check(CLI::Range(1, 65535));
             a.add_option("--font", o.font, "font family name (default DejaVu Sans)");
             a.add_option("--font-file", o.fontFile, "a .ttf or .ttc font file instead");
             a.add_option("--size", o.size, "font size, points (default 12)")
                 ->check(CLI::Range(1, 255));
             a.add_option("--color", o.color,
                          "colour code 0 to 7, a colour name or #RRGGBB (default 1, red)");
             a.add_option("--effect", o.effect, "display effect byte (default 1)")
                 ->check(CLI::Range(0, 255));
             a.add_option("--screen-color", o.screenColor,
                          "the screen's colour class: 1 one colour (default), 2 two, 3 three, "
                          "4 full colour")
                 ->check(CLI::Range(1, 4));
             a.add_option("--family", o.family, "G5 or G6 instead of asking the controller")
                 ->check(CLI::IsMember({"G5", "G6"}));
             a.add_option("--delete", o.deleteArea, "delete this dynamic area (255: all of them)")
                 ->check(CLI::Range(0, 255));
         },
         send_text},
    };
}

} // namespace

void add_commands(CLI::App &app, Options &options, Chosen &chosen) {
    std::map<std::string, CLI::App *> groups;
    for (const auto &[name, help] : kGroups) {
        CLI::App *group = app.add_subcommand(name, help);
        group->require_subcommand(1);
        groups[name] = group;
    }
    for (CommandEntry &entry : command_table()) {
        CLI::App *parent = entry.parent[0] == '\0' ? &app : groups.at(entry.parent);
        CLI::App *sub = parent->add_subcommand(entry.name, entry.help);
        entry.args(*sub, options);
        const std::string full =
            entry.parent[0] == '\0' ? entry.name : std::string(entry.parent) + " " + entry.name;
        sub->callback([&chosen, full, run = entry.run] { chosen = {full, run}; });
    }
}

} // namespace zelctl
