#include "xml/xmlTransformWriterUtils.h"

#include "transform/gammaOp.h"
#include "utils/exception.h"

#include <Imath/half.h>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace Color::Xml::Writer {

namespace {

constexpr std::size_t kNumberRoom = 32;
constexpr int kDefaultPrecision = 6; // of a stream

/// General notation, as a stream in its default state prints it.
template <int precision>
char* printGeneral(char* text, float value)
{
    return std::to_chars(text, text + kNumberRoom, value, std::chars_format::general, precision).ptr;
}

/// The same with one spelling for all NaNs.
template <int precision>
char* printFloat(char* text, float value)
{
    return printGeneral<precision>(text, std::isnan(value) ? std::fabs(value) : value);
}

char* printHalfPattern(char* text, float value)
{
    return std::to_chars(text, text + kNumberRoom, Imath::half(value).bits()).ptr;
}

constexpr NumberLayout integerLayout(std::size_t width) { return {width, printGeneral<kDefaultPrecision>}; }

constexpr NumberLayout k8iLayout = integerLayout(3);
constexpr NumberLayout k10iLayout = integerLayout(4);
constexpr NumberLayout k12iLayout = integerLayout(4);
constexpr NumberLayout k16iLayout = integerLayout(5);
constexpr NumberLayout k16fLayout = {11, printFloat<5>};

void writeNumbers(std::ostream& stream, const NumberLayout& layout, const ArrayNumbers& numbers)
{
    // A number is printed behind as many blanks as its field is wide; what makes up the field is then cut out.
    constexpr std::size_t maxWidth = 15;
    char text[maxWidth + kNumberRoom + 1];
    char* const number = text + layout.width;
    std::fill(text, number, ' ');

    // A stream takes few long pieces much faster than many short ones.
    constexpr std::size_t pieceSize = 4096;
    std::string piece;
    piece.reserve(pieceSize + sizeof(text));

    std::size_t leftOnLine = numbers.perLine;
    for (std::size_t i = 0; i < numbers.size; i += numbers.stride) {
        char* const end = layout.print(number, numbers.values[i]);
        const auto length = static_cast<std::size_t>(end - number);
        --leftOnLine;
        *end = leftOnLine == 0 ? '\n' : ' ';
        if (leftOnLine == 0) leftOnLine = numbers.perLine;
        const char* const begin = text + std::min(length, layout.width);
        piece.append(begin, static_cast<std::size_t>(end + 1 - begin));
        if (piece.size() >= pieceSize) {
            stream << piece;
            piece.clear();
        }
    }
    stream << piece;
}

} // namespace

const NumberLayout kSingleLayout = {15, printFloat<8>};
const NumberLayout kHalfPatternLayout = {5, printHalfPattern};

const NumberLayout& getNumberLayout(BitDepth depth)
{
    switch (depth) {
    case BIT_DEPTH_8i:
        return k8iLayout;
    case BIT_DEPTH_10i:
        return k10iLayout;
    case BIT_DEPTH_12i:
        return k12iLayout;
    case BIT_DEPTH_16i:
        return k16iLayout;
    case BIT_DEPTH_16f:
        return k16fLayout;
    case BIT_DEPTH_32f:
        return kSingleLayout;
    case BIT_DEPTH_UNKNOWN:
        break;
    }
    raise(LogCategory::XML_WRITER, ErrorIds::WRITER_BIT_DEPTH_UNKNOWN);
}

void writeArray(XmlFormatter& formatter, std::initializer_list<uint32_t> dimensions, const NumberLayout& layout,
                const ArrayNumbers& numbers)
{
    std::string dim;
    for (const uint32_t dimension : dimensions) {
        if (!dim.empty()) dim += ' ';
        dim += std::to_string(dimension);
    }
    formatter.writeStartTag("Array", {{"dim", dim}});
    writeNumbers(formatter.getStream(), layout, numbers);
    formatter.writeEndTag("Array");
}

float getFileVersion(const Op& op)
{
    if (const auto* gamma = dynamic_cast<const GammaOp*>(&op)) {
        return gamma->getParams(3) == GammaOp::getIdentityParams(gamma->getStyle()) ? 1.3F : 1.5F;
    }
    // Read from 1.3 on, but always written as 1.4.
    if (op.getOpType() == OP_DITHER) return 1.4F;
    return op.getMinimumVersion();
}

} // namespace Color::Xml::Writer
