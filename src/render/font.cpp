#include "render/font.h"

#include <array>
#include <map>
#include <memory>
#include <mutex>

#include <cairo-ft.h>
#include <cairo.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include "render/area.h"
#include "sdk/console.h"

namespace zel {
namespace {

// One font file opened for the life of the process. Besides its FT_Face it holds one cairo face
// per synthesis (plain, bold, oblique, both), all made when the file is first opened: cairo
// hands out an existing face of the same FT_Face and load flags whenever one is alive, so faces
// made later and then given their synthesis could change the look of text that another area
// draws. Made together, each request gets its own face, never altered after it was made.
struct OpenFontFile {
    FT_Face face = nullptr;
    std::array<cairo_font_face_t *, 4> faces{}; // index: bit 0 bold, bit 1 oblique
};

struct FontRegistry {
    std::mutex mutex;
    FT_Library library = nullptr;
    // faceCache: font file path (UTF-8) to its open file. Entries are never removed.
    std::map<std::string, std::unique_ptr<OpenFontFile>> faceCache;
};

// Never destroyed: the faces must outlive every cairo object that may still use them, up to the
// end of the process.
FontRegistry &registry() {
    static FontRegistry *instance = new FontRegistry;
    return *instance;
}

void make_faces(OpenFontFile &file) {
    // Created in this order, each create finds no live face with synthesis 0 and makes a new one.
    static constexpr std::array<int, 4> kOrder = {3, 1, 2, 0};
    for (int variant : kOrder) {
        cairo_font_face_t *face = cairo_ft_font_face_create_for_ft_face(file.face, 0);
        unsigned int synth = 0;
        if ((variant & 1) != 0) {
            synth |= CAIRO_FT_SYNTHESIZE_BOLD;
        }
        if ((variant & 2) != 0) {
            synth |= CAIRO_FT_SYNTHESIZE_OBLIQUE;
        }
        if (synth != 0) {
            cairo_ft_font_face_set_synthesize(face, synth);
        }
        file.faces[static_cast<std::size_t>(variant)] = face;
    }
}

} // namespace

double font_pixel_size_for(uint16_t fontSize) {
    return roundHalfAway(fontSize * 4.0 / 3.0);
}

void ensure_free_type_library() {
    FontRegistry &fonts = registry();
    std::lock_guard lock(fonts.mutex);
    if (fonts.library == nullptr) {
        FT_Init_FreeType(&fonts.library); // a failure leaves it null; openFontFile reports that
    }
}

void set_no_antialias(cairo_t *cr) {
    cairo_font_options_t *options = cairo_font_options_create();
    cairo_get_font_options(cr, options);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_NONE);
    cairo_set_font_options(cr, options);
    cairo_font_options_destroy(options);
}

void openFontFile(cairo_t *cr, const std::string &path, uint8_t bold, uint8_t italic) {
    FontRegistry &fonts = registry();
    cairo_font_face_t *face = nullptr;
    {
        std::lock_guard lock(fonts.mutex);
        auto found = fonts.faceCache.find(path);
        if (found == fonts.faceCache.end()) {
            if (fonts.library == nullptr) {
                console_printf("Error NULL == FTLib\n");
                return;
            }
            auto file = std::make_unique<OpenFontFile>();
            // Face index 0 always: a collection file gives its first face.
            const FT_Error error = FT_New_Face(fonts.library, path.c_str(), 0, &file->face);
            if (error != 0) {
                console_printf("Error %d opening font.\n", static_cast<int>(error));
                return; // not remembered: the next text tries the file again
            }
            make_faces(*file);
            found = fonts.faceCache.emplace(path, std::move(file)).first;
        }
        face = found->second->faces[(bold != 0 ? 1u : 0u) | (italic != 0 ? 2u : 0u)];
    }
    cairo_set_font_face(cr, face);
    set_no_antialias(cr);
}

void TKarea::applyFont(cairo_t *cr, uint8_t bold, uint8_t italic) const {
    if (!fontPath.empty() && fontName.empty()) {
        openFontFile(cr, fontPath, bold, italic);
    } else if (!fontName.empty()) {
        cairo_select_font_face(cr, fontName.c_str(),
                               italic != 0 ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                               bold != 0 ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    }
    // Neither: the context keeps cairo's default font.
    set_no_antialias(cr);
}

void TKarea::applyTextColor(cairo_t *cr, uint32_t color) {
    if (color < 8) {
        // The eight codes: bit 0 red, bit 1 green, bit 2 blue. 7 is white, never 0x000007.
        cairo_set_source_rgb(cr, (color & 1) != 0 ? 1.0 : 0.0, (color & 2) != 0 ? 1.0 : 0.0,
                             (color & 4) != 0 ? 1.0 : 0.0);
        return;
    }
    // Each component passes through single precision on its way to cairo.
    const auto channel = [color](int shift) {
        return static_cast<double>(static_cast<float>(((color >> shift) & 0xFF) / 255.0));
    };
    cairo_set_source_rgb(cr, channel(16), channel(8), channel(0));
}

bool font_argument_is_file(std::string_view argument) {
    std::string lower(argument);
    for (char &c : lower) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return lower.find(".ttf") != std::string::npos || lower.find(".ttc") != std::string::npos;
}

} // namespace zel
