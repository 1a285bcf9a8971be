#include "program_json.h"

#include <cerrno>
#include <cstring>
#include <deque>
#include <filesystem>
#include <fstream>
#include <iconv.h>
#include <initializer_list>
#include <limits>
#include <map>

#include "zel_sdk_dual.h"

namespace zelctl {
namespace {

namespace fs = std::filesystem;

const char *const kDefaultFont = "DejaVu Sans";

// Refuses keys the format does not have: a misspelt key would otherwise be dropped silently.
void check_keys(const Json &object, std::initializer_list<const char *> known,
                const std::string &where) {
    if (!object.is_object()) throw ProgramError(where + ": an object was expected");
    for (const auto &item : object.items()) {
        bool found = false;
        for (const char *k : known)
            found = found || item.key() == k;
        if (!found) throw ProgramError(where + ": unknown key \"" + item.key() + "\"");
    }
}

template <typename T>
T number(const Json &object, const char *key, T fallback, const std::string &where) {
    if (!object.contains(key)) return fallback;
    const Json &v = object.at(key);
    if (!v.is_number_integer()) throw ProgramError(where + ": \"" + key + "\" must be an integer");
    const auto value = v.get<int64_t>();
    if (value < static_cast<int64_t>(std::numeric_limits<T>::min()) ||
        value > static_cast<int64_t>(std::numeric_limits<T>::max()))
        throw ProgramError(where + ": \"" + key + "\" is out of range");
    return static_cast<T>(value);
}

bool flag(const Json &object, const char *key, bool fallback, const std::string &where) {
    if (!object.contains(key)) return fallback;
    if (!object.at(key).is_boolean())
        throw ProgramError(where + ": \"" + key + "\" must be true or false");
    return object.at(key).get<bool>();
}

std::string text(const Json &object, const char *key, const std::string &where) {
    if (!object.contains(key) || !object.at(key).is_string())
        throw ProgramError(where + ": \"" + key + "\" must be a string");
    return object.at(key).get<std::string>();
}

// A colour: a colour code 0 to 7 (bit 0 red, 1 green, 2 blue), a name, or "#RRGGBB".
uint32_t colour(const Json &object, const char *key, uint32_t fallback, const std::string &where) {
    if (!object.contains(key)) return fallback;
    const Json &v = object.at(key);
    if (v.is_number_unsigned()) return v.get<uint32_t>();
    static const std::map<std::string, uint32_t> kNames = {
        {"black", 0}, {"red", 1},     {"green", 2}, {"yellow", 3},
        {"blue", 4},  {"magenta", 5}, {"cyan", 6},  {"white", 7}};
    if (v.is_string()) {
        const auto name = v.get<std::string>();
        if (const auto it = kNames.find(name); it != kNames.end()) return it->second;
        if (name.size() == 7 && name[0] == '#') {
            if (const auto bytes = parse_hex(name.substr(1)))
                return (uint32_t{(*bytes)[0]} << 16) | (uint32_t{(*bytes)[1]} << 8) | (*bytes)[2];
        }
    }
    throw ProgramError(where + ": \"" + key + "\" must be a colour code, a colour name or #RRGGBB");
}

// Up to `size` raw bytes for the controller, as an array of numbers.
template <std::size_t N>
void raw_bytes(const Json &object, const char *key, uint8_t (&out)[N], const std::string &where) {
    if (!object.contains(key)) return;
    const Json &v = object.at(key);
    if (!v.is_array() || v.size() > N)
        throw ProgramError(where + ": \"" + key + "\" must be an array of at most " +
                           std::to_string(N) + " bytes");
    for (std::size_t i = 0; i < v.size(); ++i) {
        if (!v[i].is_number_unsigned() || v[i].get<unsigned>() > 255)
            throw ProgramError(where + ": \"" + key + "\" holds a value that is not a byte");
        out[i] = v[i].get<uint8_t>();
    }
}

// Strings the library keeps as pointers until integration live here until the build ends.
class Builder {
  public:
    Builder(const Json &d, std::string baseDir, uint16_t type)
        : m_d(d), m_base(std::move(baseDir)), m_type(type) {}

    BuiltProgram run();

  private:
    const char *keep(std::string s) { return m_kept.emplace_back(std::move(s)).c_str(); }
    const char *path(const Json &object, const char *key, const std::string &where) {
        fs::path p = text(object, key, where);
        if (p.is_relative()) p = fs::path(m_base) / p;
        return keep(p.string());
    }
    void check(int32_t result, const std::string &entry, const std::string &where) {
        if (result != 0)
            throw ProgramError(where + ": zelDual_" + entry + " gave " + std::to_string(result));
    }
    template <typename Params> Params page(const Json &a, const std::string &where);
    template <typename Params> void style(Params &p, const Json &a, const std::string &where);
    TimeContentRecord time_content(const Json &c, const std::string &where);
    void text_area(uint16_t id, const Json &a, const std::string &where);
    void clock_area(uint16_t id, const Json &a, const std::string &where);
    void background_area(uint16_t id, const Json &a, const std::string &where);
    void add_area(uint16_t id, uint8_t type, const Json &a, const std::string &where);

    const Json &m_d;
    std::string m_base;
    uint16_t m_type;
    bool m_g6 = false;
    std::deque<std::string> m_kept;
};

// The page header of an area's pages: the effect, and raw header bytes for the controller.
template <typename Params> Params Builder::page(const Json &a, const std::string &where) {
    Params p{};
    p.displayEffect = number<uint8_t>(a, "effect", 1, where);
    uint8_t header[9] = {};
    raw_bytes(a, "pageBytes", header, where);
    if (a.contains("pageBytes")) {
        p.pageByte0 = header[0];
        p.pageByte2 = header[2];
        p.pageByte3 = header[3];
        p.pageWord4 = static_cast<uint16_t>(header[4] | (header[5] << 8));
        p.pageByte6 = header[6];
        if (a.at("pageBytes").size() > 1) p.displayEffect = header[1];
    }
    return p;
}

template <typename Params> void Builder::style(Params &p, const Json &a, const std::string &where) {
    p.arrMode = flag(a, "multiLine", true, where) ? 1 : 0;
    p.fontSize = number<uint16_t>(a, "fontSize", 9, where);
    p.fontColor = colour(a, "color", 1, where);
    p.fontBold = flag(a, "bold", false, where) ? 1 : 0;
    p.fontItalic = flag(a, "italic", false, where) ? 1 : 0;
    p.horizontalAlign = number<uint8_t>(a, "align", 1, where);
    p.verticalAlign = number<uint8_t>(a, "valign", 1, where);
}

TimeContentRecord Builder::time_content(const Json &c, const std::string &where) {
    TimeContentRecord t{};
    t.arrMode = flag(c, "multiLine", true, where) ? 1 : 0;
    t.fontColor = colour(c, "color", 1, where);
    t.fontSize = number<uint16_t>(c, "fontSize", 9, where);
    t.horizontalAlign = number<uint8_t>(c, "align", 1, where);
    // The record is packed: its formats are read and written by value, never bound by reference.
    const auto shown = [&](const char *key) { return c.contains(key) && !c.at(key).is_null(); };
    if (shown("date")) {
        t.dateEnable = 1;
        t.dateFormat = number<uint32_t>(c, "date", 0, where);
    }
    if (shown("week")) {
        t.weekEnable = 1;
        t.weekFormat = number<uint32_t>(c, "week", 0, where);
    }
    if (shown("time")) {
        t.timeEnable = 1;
        t.timeFormat = number<uint32_t>(c, "time", 0, where);
    }
    return t;
}

void Builder::text_area(uint16_t id, const Json &a, const std::string &where) {
    const bool hasFile = a.contains("fontFile");
    const char *font =
        hasFile ? path(a, "fontFile", where)
                : keep(to_gbk(a.contains("font") ? text(a, "font", where) : kDefaultFont, where));
    if (a.contains("text")) {
        const char *body = keep(to_gbk(text(a, "text", where), where));
        if (m_g6) {
            auto p = page<TextPageParams_G6>(a, where);
            style(p, a, where);
            check(hasFile ? zelDual_program_fontPath_picturesAreaAddTxt_G6(id, body, font, &p)
                          : zelDual_program_picturesAreaAddTxt_G6(id, body, font, &p),
                  "program_picturesAreaAddTxt_G6", where);
        } else {
            auto p = page<TextPageParams_G5>(a, where);
            style(p, a, where);
            check(hasFile ? zelDual_program_fontPath_picturesAreaAddTxt(id, body, font, &p)
                          : zelDual_program_picturesAreaAddTxt(id, body, font, &p),
                  "program_picturesAreaAddTxt", where);
        }
    }
    if (a.contains("pictures")) {
        const Json &pictures = a.at("pictures");
        if (!pictures.is_array()) throw ProgramError(where + ": \"pictures\" must be an array");
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            const std::string at = where + ".pictures[" + std::to_string(i) + "]";
            Json picture = pictures[i].is_string() ? Json{{"path", pictures[i]}} : pictures[i];
            check_keys(picture, {"path", "effect", "pageBytes"}, at);
            const char *png = path(picture, "path", at);
            const auto place = static_cast<uint16_t>(i);
            if (m_g6) {
                const auto p = page<TextPageParams_G6>(picture, at);
                check(zelDual_program_pictureAreaAddPic_G6(id, place, &p, png),
                      "program_pictureAreaAddPic_G6", at);
            } else {
                const auto p = page<TextPageParams_G5>(picture, at);
                check(zelDual_program_pictureAreaAddPic(id, place, &p, png),
                      "program_pictureAreaAddPic", at);
            }
        }
    }
    if (a.contains("frame")) {
        const Json &f = a.at("frame");
        check_keys(f, {"png", "settings"}, where + ".frame");
        const char *png = path(f, "png", where + ".frame");
        if (m_g6) {
            uint8_t s[6] = {};
            raw_bytes(f, "settings", s, where + ".frame");
            ZelFrameParams_G6 params{s[0], s[1], {s[2], s[3], s[4]}, s[5]};
            check(zelDual_program_picturesAreaAddFrame_G6(id, &params, png),
                  "program_picturesAreaAddFrame_G6", where + ".frame");
        } else {
            uint8_t s[6] = {};
            raw_bytes(f, "settings", s, where + ".frame");
            ZelFrameHeader_G5 header{1,    s[0], s[1],
                                     s[2], s[3], static_cast<uint16_t>(s[4] | (s[5] << 8))};
            check(zelDual_program_picturesAreaAddFrame(id, &header, png),
                  "program_picturesAreaAddFrame", where + ".frame");
        }
    }
    if (a.contains("sound")) {
        if (!m_g6) throw ProgramError(where + ": \"sound\" needs a G6 program");
        const Json &s = a.at("sound");
        check_keys(s, {"text", "settings"}, where + ".sound");
        uint8_t raw[16] = {};
        raw_bytes(s, "settings", raw, where + ".sound");
        ZelSoundParams_G6 params{};
        std::memcpy(&params, raw, sizeof params);
        const char *spoken = keep(to_gbk(text(s, "text", where + ".sound"), where));
        check(zelDual_program_pictureAreaEnableSound_G6(id, &params, spoken),
              "program_pictureAreaEnableSound_G6", where + ".sound");
    }
}

void Builder::clock_area(uint16_t id, const Json &a, const std::string &where) {
    if (a.contains("digital") == a.contains("analog"))
        throw ProgramError(where + ": a clock area has \"digital\" or \"analog\"");
    if (a.contains("digital")) {
        const Json &c = a.at("digital");
        const std::string at = where + ".digital";
        check_keys(
            c,
            {"date", "week", "time", "font", "fontFile", "fontSize", "color", "multiLine", "align"},
            at);
        TimeContentRecord t = time_content(c, at);
        const bool hasFile = c.contains("fontFile");
        t.fontName =
            hasFile ? path(c, "fontFile", at)
                    : keep(to_gbk(c.contains("font") ? text(c, "font", at) : kDefaultFont, at));
        if (m_g6) {
            check(hasFile ? zelDual_program_fontPath_timeAreaAddContent_G6(id, &t)
                          : zelDual_program_timeAreaAddContent_G6(id, &t),
                  "program_timeAreaAddContent_G6", at);
        } else {
            check(hasFile ? zelDual_program_fontPath_timeAreaAddContent(id, &t)
                          : zelDual_program_timeAreaAddContent(id, &t),
                  "program_timeAreaAddContent", at);
        }
        return;
    }
    const Json &c = a.at("analog");
    const std::string at = where + ".analog";
    check_keys(c, {"dial", "hourHand", "minuteHand", "secondHand", "marks", "dialPicture"}, at);
    AnalogClockRecord hands{};
    // The record is packed: a hand's colour is assigned by value, never bound by reference.
    struct Hand {
        uint8_t length = 0;
        uint32_t color = 0;
    };
    const auto hand = [&](const char *key, uint8_t length, uint32_t color) {
        if (!c.contains(key)) return Hand{length, color};
        const Json &h = c.at(key);
        check_keys(h, {"length", "color"}, at + "." + key);
        return Hand{number<uint8_t>(h, "length", 0, at + "." + key),
                    colour(h, "color", 1, at + "." + key)};
    };
    const Hand hour = hand("hourHand", hands.hourHandLength, hands.hourHandColor);
    hands.hourHandLength = hour.length;
    hands.hourHandColor = hour.color;
    const Hand minute = hand("minuteHand", hands.minuteHandLength, hands.minuteHandColor);
    hands.minuteHandLength = minute.length;
    hands.minuteHandColor = minute.color;
    const Hand second = hand("secondHand", hands.secondHandLength, hands.secondHandColor);
    hands.secondHandLength = second.length;
    hands.secondHandColor = second.color;
    ZelDialMarkColors marks{1, 1, 1};
    if (c.contains("marks")) {
        const Json &m = c.at("marks");
        check_keys(m, {"hour", "minute", "circle"}, at + ".marks");
        marks.hourMarkColor = colour(m, "hour", 1, at + ".marks");
        marks.minuteMarkColor = colour(m, "minute", 1, at + ".marks");
        marks.circleColor = colour(m, "circle", 1, at + ".marks");
    }
    const auto dial = number<uint32_t>(c, "dial", 0, at);
    if (m_g6) {
        check(zelDual_program_timeAreaAddAnalogClock_G6(id, &hands, dial, &marks),
              "program_timeAreaAddAnalogClock_G6", at);
    } else {
        check(zelDual_program_timeAreaAddAnalogClock(id, &hands, dial, &marks),
              "program_timeAreaAddAnalogClock", at);
    }
    if (c.contains("dialPicture")) {
        const char *png = path(c, "dialPicture", at);
        check(m_g6 ? zelDual_program_timeAreaChangeDialPic_G6(id, png)
                   : zelDual_program_timeAreaChangeDialPic(id, png),
              "program_timeAreaChangeDialPic", at);
    }
}

void Builder::background_area(uint16_t id, const Json &a, const std::string &where) {
    auto p = page<TextPageParams_G6>(a, where);
    if (a.contains("color")) {
        check(zelDual_program_backGroundColor_G6(id, &p, colour(a, "color", 0, where)),
              "program_backGroundColor_G6", where);
    }
    if (a.contains("pictures")) {
        const Json &pictures = a.at("pictures");
        if (!pictures.is_array()) throw ProgramError(where + ": \"pictures\" must be an array");
        for (std::size_t i = 0; i < pictures.size(); ++i) {
            const std::string at = where + ".pictures[" + std::to_string(i) + "]";
            Json picture = pictures[i].is_string() ? Json{{"path", pictures[i]}} : pictures[i];
            check_keys(picture, {"path", "effect", "pageBytes"}, at);
            const auto pp = page<TextPageParams_G6>(picture, at);
            check(zelDual_program_backGroundPic_G6(id, static_cast<uint16_t>(i), &pp,
                                                   path(picture, "path", at)),
                  "program_backGroundPic_G6", at);
        }
    }
}

void Builder::add_area(uint16_t id, uint8_t type, const Json &a, const std::string &where) {
    const auto x = number<uint16_t>(a, "x", 0, where);
    const auto y = number<uint16_t>(a, "y", 0, where);
    const auto w = number<uint16_t>(a, "width", 0, where);
    const auto h = number<uint16_t>(a, "height", 0, where);
    if (w == 0 || h == 0) throw ProgramError(where + ": \"width\" and \"height\" are required");
    if (m_g6) {
        ZelAreaRecord_G6 r{type, x, y, w, h, 0, 0, 0};
        check(zelDual_program_addArea_G6(id, &r), "program_addArea_G6", where);
    } else {
        ZelAreaRecord_G5 r{type, x, y, w, h};
        check(zelDual_program_AddArea(id, &r), "program_AddArea", where);
    }
}

BuiltProgram Builder::run() {
    check_keys(m_d, {"family", "screen", "program", "frame", "areas"}, "program description");
    BuiltProgram built;
    built.controllerType = m_type;
    built.family = family_of(m_type);
    if (m_d.contains("family")) {
        const auto f = text(m_d, "family", "program description");
        if (f != "G5" && f != "G6") throw ProgramError("\"family\" must be \"G5\" or \"G6\"");
        built.family = f == "G6" ? Family::G6 : Family::G5;
    }
    m_g6 = built.family == Family::G6;

    const Json screen = m_d.value("screen", Json::object());
    check_keys(screen, {"color", "controllerType", "doubleColor"}, "screen");
    const auto color = number<int32_t>(screen, "color", 2, "screen");
    zelDual_program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(color), m_type,
                                        number<uint32_t>(screen, "doubleColor", 1, "screen"));

    const Json program = m_d.value("program", Json::object());
    check_keys(program, {"number", "playTimes", "timeSpan", "week"}, "program");
    const auto number_ = number<int32_t>(program, "number", 1, "program");
    const auto playTimes = number<uint8_t>(program, "playTimes", 1, "program");
    const auto timeSpan = number<uint16_t>(program, "timeSpan", 0, "program");
    const auto week = number<uint8_t>(program, "week", 0xFF, "program");
    if (m_g6) {
        ZelProgramHeader_G6 h{};
        h.ProgramName = static_cast<uint32_t>(number_);
        h.ProgramPlayTimes = playTimes;
        h.ProgramTimeSpan = timeSpan;
        h.ProgramWeek = week;
        h.ProgramLifeSpan_sy = 0xFFFF;
        h.ProgramLifeSpan_ey = 0xFFFF;
        check(zelDual_program_addProgram_G6(&h), "program_addProgram_G6", "program");
    } else {
        ZelProgramHeader_G5 h{};
        h.ProgramName = static_cast<uint32_t>(number_);
        h.ProgramPlayTimes = playTimes;
        h.ProgramTimeSpan = timeSpan;
        h.ProgramWeek = week;
        h.ProgramLifeSpan_sy = 0xFFFF;
        h.ProgramLifeSpan_ey = 0xFFFF;
        check(zelDual_program_addProgram(&h), "program_addProgram", "program");
    }

    if (m_d.contains("frame")) {
        const Json &f = m_d.at("frame");
        check_keys(f, {"png", "settings"}, "frame");
        uint8_t s[6] = {};
        raw_bytes(f, "settings", s, "frame");
        const char *png = path(f, "png", "frame");
        if (m_g6) {
            ZelFrameParams_G6 params{s[0], s[1], {s[2], s[3], s[4]}, s[5]};
            check(zelDual_program_addFrame_G6(&params, png), "program_addFrame_G6", "frame");
        } else {
            ZelFrameHeader_G5 header{1,    s[0], s[1],
                                     s[2], s[3], static_cast<uint16_t>(s[4] | (s[5] << 8))};
            check(zelDual_program_addFrame(&header, png), "program_addFrame", "frame");
        }
    }

    if (!m_d.contains("areas") || !m_d.at("areas").is_array() || m_d.at("areas").empty())
        throw ProgramError("program description: \"areas\" must be a list of areas");
    const Json &areas = m_d.at("areas");
    for (std::size_t i = 0; i < areas.size(); ++i) {
        const Json &a = areas[i];
        const std::string where = "areas[" + std::to_string(i) + "]";
        const auto kind = text(a, "type", where);
        const auto id = number<uint16_t>(a, "id", static_cast<uint16_t>(i + 1), where);
        if (kind == "text") {
            check_keys(a, {"id",       "type",      "x",        "y",        "width",  "height",
                           "text",     "font",      "fontFile", "fontSize", "color",  "bold",
                           "italic",   "multiLine", "align",    "valign",   "effect", "pageBytes",
                           "pictures", "frame",     "sound"},
                       where);
            add_area(id, 0, a, where);
            text_area(id, a, where);
        } else if (kind == "clock") {
            check_keys(a, {"id", "type", "x", "y", "width", "height", "digital", "analog"}, where);
            add_area(id, 2, a, where);
            clock_area(id, a, where);
        } else if (kind == "background") {
            if (!m_g6) throw ProgramError(where + ": a background needs a G6 program");
            check_keys(a,
                       {"id", "type", "x", "y", "width", "height", "color", "pictures", "effect",
                        "pageBytes"},
                       where);
            add_area(id, 11, a, where);
            background_area(id, a, where);
        } else {
            throw ProgramError(where + ": \"type\" must be \"text\", \"clock\" or \"background\"");
        }
        built.areas.push_back(Json{{"id", id}, {"type", kind}});
    }

    if (m_g6) {
        ZelProgramFile_G6 files{};
        check(zelDual_program_IntegrateProgramFile_G6(&files), "program_IntegrateProgramFile_G6",
              "program");
        built.files.push_back(
            {std::string(files.programFileName, 4),
             files.programFileType,
             {files.programFileData, files.programFileData + files.programFileLen}});
        built.files.push_back({std::string(files.dataFileName, 4),
                               files.dataFileType,
                               {files.dataFileData, files.dataFileData + files.dataFileLen}});
        zelDual_program_freeBuffer_G6(&files);
    } else {
        ZelProgramFile_G5 file{};
        check(zelDual_program_IntegrateProgramFile(&file), "program_IntegrateProgramFile",
              "program");
        built.files.push_back({std::string(file.fileName, 4),
                               file.fileType,
                               {file.fileData, file.fileData + file.fileLen}});
        zelDual_program_freeBuffer(&file);
    }
    return built;
}

} // namespace

Family family_of(uint16_t controllerType) {
    switch (controllerType & 0xFF) {
    case 0x58:
    case 0x62:
    case 0x63:
    case 0x64:
    case 0x66:
    case 0x74:
        return Family::G6;
    default:
        return Family::G5;
    }
}

std::string to_gbk(const std::string &utf8, const std::string &where) {
    iconv_t cd = ::iconv_open("GBK", "UTF-8");
    if (cd == reinterpret_cast<iconv_t>(-1)) throw ProgramError("cannot convert text to GBK");
    std::string out(utf8.size() * 2 + 4, '\0');
    char *in = const_cast<char *>(utf8.data());
    size_t inLeft = utf8.size();
    char *dst = out.data();
    size_t outLeft = out.size();
    const size_t r = ::iconv(cd, &in, &inLeft, &dst, &outLeft);
    ::iconv_close(cd);
    if (r == static_cast<size_t>(-1))
        throw ProgramError(where + ": the text has a character that GBK does not have");
    out.resize(out.size() - outLeft);
    return out;
}

uint32_t parse_colour(const std::string &text, const std::string &where) {
    Json holder;
    if (!text.empty() && text.find_first_not_of("0123456789") == std::string::npos)
        holder["color"] = static_cast<uint32_t>(std::stoul(text));
    else
        holder["color"] = text;
    return colour(holder, "color", 1, where);
}

Json read_description(const std::string &path) {
    std::ifstream in(path);
    if (!in) throw ProgramError(path + ": " + std::strerror(errno));
    try {
        return Json::parse(in);
    } catch (const Json::parse_error &e) {
        throw ProgramError(path + ": not JSON: " + e.what());
    }
}

bool description_names_type(const Json &description, uint16_t &controllerType) {
    if (!description.is_object() || !description.contains("screen")) return false;
    const Json &screen = description.at("screen");
    if (!screen.is_object() || !screen.contains("controllerType")) return false;
    const Json &v = screen.at("controllerType");
    if (v.is_number_unsigned() && v.get<uint64_t>() <= 0xFFFF) {
        controllerType = v.get<uint16_t>();
        return true;
    }
    if (v.is_string()) {
        const auto s = v.get<std::string>();
        try {
            std::size_t used = 0;
            const unsigned long value = std::stoul(s, &used, 0);
            if (used == s.size() && value <= 0xFFFF) {
                controllerType = static_cast<uint16_t>(value);
                return true;
            }
        } catch (const std::exception &) {
        }
    }
    throw ProgramError("screen: \"controllerType\" must be a type code such as \"0x0051\"");
}

BuiltProgram build_program(const Json &description, const std::string &baseDir,
                           uint16_t controllerType) {
    Builder builder(description, baseDir, controllerType);
    try {
        BuiltProgram built = builder.run();
        zelDual_program_deleteProgram();
        return built;
    } catch (...) {
        zelDual_program_deleteProgram();
        throw;
    }
}

} // namespace zelctl
