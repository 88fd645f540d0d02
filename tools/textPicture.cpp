#include "textPicture.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include <langinfo.h>
#include <locale.h>

namespace Command {

namespace {

using GlyphTable = std::vector<std::string>; ///< from empty to full

const GlyphTable& barGlyphs(Glyphs glyphs)
{
    static const GlyphTable blocks = {" ", "▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    static const GlyphTable ascii = {" ", ".", "=", "#"};
    return glyphs == Glyphs::BLOCKS ? blocks : ascii;
}

const GlyphTable& shadeGlyphs(Glyphs glyphs)
{
    static const GlyphTable blocks = {" ", "░", "▒", "▓", "█"};
    static const GlyphTable ascii = {" ", ".", ":", "+", "#"};
    return glyphs == Glyphs::BLOCKS ? blocks : ascii;
}

/// The nearest of the steps from 0 to the last one; 0 for NaN.
size_t stepOf(float part, size_t last)
{
    if (!(part > 0.0f)) return 0;
    return static_cast<size_t>(std::lround(std::min(part, 1.0f) * static_cast<float>(last)));
}

} // namespace

Glyphs glyphsOfLocale()
{
    // An own locale object: the one of the process stays "C", which OpenImageIO and others may rely on.
    const locale_t locale = newlocale(LC_CTYPE_MASK, "", nullptr);
    if (!locale) return Glyphs::ASCII;
    const bool hasUTF8 = std::strcmp(nl_langinfo_l(CODESET, locale), "UTF-8") == 0;
    freelocale(locale);
    return hasUTF8 ? Glyphs::BLOCKS : Glyphs::ASCII;
}

Panel drawBars(const std::string& heading, const std::vector<float>& values, float lowest, float highest, size_t height,
               Glyphs glyphs)
{
    const GlyphTable& table = barGlyphs(glyphs);
    const size_t full = table.size() - 1;
    Panel panel{heading, TextPicture(height), values.size()};
    for (const float value : values) {
        // In double precision: the limits may lie as far apart as floats can.
        const double part = (static_cast<double>(value) - lowest) / (static_cast<double>(highest) - lowest);
        const size_t steps = stepOf(static_cast<float>(part), height * full);
        for (size_t row = 0; row < height; ++row) {
            const size_t below = (height - 1 - row) * full; // steps that the rows under this one take
            panel.lines[row] += table[std::clamp(steps, below, below + full) - below];
        }
    }
    return panel;
}

Panel drawShades(const std::string& heading, const std::vector<float>& values, size_t width, Glyphs glyphs)
{
    const GlyphTable& table = shadeGlyphs(glyphs);
    Panel panel{heading, TextPicture(values.size() / width), width};
    for (size_t i = 0; i < values.size(); ++i)
        panel.lines[i / width] += table[stepOf(values[i], table.size() - 1)];
    return panel;
}

TextPicture joinPanels(const std::vector<Panel>& panels)
{
    TextPicture picture(panels.front().lines.size() + 1);
    std::string gap;
    for (const Panel& panel : panels) {
        picture[0] += gap + panel.heading + std::string(panel.width - panel.heading.size(), ' ');
        for (size_t row = 0; row < panel.lines.size(); ++row)
            picture[row + 1] += gap + panel.lines[row];
        gap = "  ";
    }
    for (std::string& line : picture)
        line.erase(line.find_last_not_of(' ') + 1);
    return picture;
}

} // namespace Command
