#include "dynamic/render.h"

#include "render/font.h"
#include "render/pictures_area.h"
#include "render/pictures_area_g6.h"

namespace zel::dynamic {

RenderedPages render_g5(const AreaRect &rect, const ContentG5 &content) {
    PageDisplayRecord display;
    display.displayEffect = content.effects.displayEffect;
    display.pageByte2 = content.effects.pageByte2;
    display.pageByte3 = content.effects.pageByte3;
    display.pageWord4 = content.effects.pageWord4;
    display.pageByte6 = content.effects.pageByte6;
    display.pageWidth = rect.width;
    PicturesArea area;
    area.set_area_header(kDynamicAreaKind, rect);
    if (content.kind == kContentText) {
        // The test looks at a lower-case copy; the area gets the font as the caller spelt it.
        if (font_argument_is_file(content.font)) {
            area.addTextByPath(content.text, content.font, content.style, display);
        } else {
            area.addText(content.text, content.font, content.style, display);
        }
    } else if (content.kind == kContentPicture) {
        area.addPicture(0, content.picture, display);
    }
    area.renderPages();
    RenderedPages out;
    out.effects = content.effects;
    out.pages = std::move(area.encodedPages);
    out.lastPageWidth = area.lastPageWidth;
    return out;
}

RenderedG6 render_g6(const AreaRect &rect, const ContentG6 &content) {
    PicturesArea_g6 area;
    area.set_area_header(kDynamicAreaKind, rect);
    if (content.kind == kContentText) {
        if (content.fontTest && font_argument_is_file(content.font)) {
            area.addTextByPath(content.text, content.font, content.style, content.display);
        } else {
            area.addText(content.text, content.font, content.style, content.display);
        }
    } else if (content.kind == kContentPicture) {
        area.addPicture(0, content.picture, content.display);
    }
    area.renderPages();
    return {std::move(area.encodedPages), area.lastPageWidth};
}

} // namespace zel::dynamic
