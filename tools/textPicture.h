#pragma once

#include <string>
#include <vector>

namespace Command {

/// Which characters pictures are drawn with.
enum class Glyphs
{
    BLOCKS, ///< block elements of Unicode, as UTF-8
    ASCII,
};

/// Blocks where the locale of the environment has UTF-8.
Glyphs glyphsOfLocale();

/// A picture as lines without line breaks and without blanks at their ends.
using TextPicture = std::vector<std::string>;

/// A panel of a picture, with its heading above it.
struct Panel
{
    std::string heading;
    TextPicture lines; ///< of equal width
    size_t width;      ///< in characters
};

/// A bar for each value from left to right: as high as the panel at highest, and nothing at lowest, below it and for
/// NaN.
Panel drawBars(const std::string& heading, const std::vector<float>& values, float lowest, float highest, size_t height,
               Glyphs glyphs);

/// A cell for each value, row by row from the top: blank at 0, below it and for NaN, full at 1 and above.
Panel drawShades(const std::string& heading, const std::vector<float>& values, size_t width, Glyphs glyphs);

/// The panels side by side, which must be equally high.
TextPicture joinPanels(const std::vector<Panel>& panels);

} // namespace Command
