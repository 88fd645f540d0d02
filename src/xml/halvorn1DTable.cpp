#include "xml/halvorn1DTable.h"

#include "transform/lut1DOp.h"
#include "utils/exception.h"
#include "utils/text.h"
#include "xml/halvornLines.h"

#include <algorithm>
#include <boost/filesystem/path.hpp>

namespace Color {

namespace {

constexpr std::string_view kHeaderWord = "LUT: ";
constexpr uint32_t kLengthWithoutHeader = 256;

/// A letter, with which some numbers of a depth have another meaning.
constexpr char kFloatLetter = 'f';

[[noreturn]] void fail(const char* reason, const std::string& fileName)
{
    raise(LogCategory::XML_HALVORN_1D_READER, ErrorIds::HALVORN_1D_READER_ERROR, reason, fileName);
}

[[noreturn]] void failSyntax(const std::string& fileName) { fail("Syntax error reading LUT file", fileName); }

BitDepth inDepthOfLength(uint32_t length)
{
    switch (length) {
    case 256:
        return BIT_DEPTH_8i;
    case 1024:
        return BIT_DEPTH_10i;
    case 4096:
        return BIT_DEPTH_12i;
    case 65536:
        return BIT_DEPTH_16f;
    default:
        return BIT_DEPTH_UNKNOWN;
    }
}

BitDepth outDepthOfLength(uint32_t length)
{
    const BitDepth depth = inDepthOfLength(length);
    return depth == BIT_DEPTH_16f ? BIT_DEPTH_16i : depth;
}

bool isFloatLetter(std::string_view text) { return equalsIgnoreCase(text.substr(0, 1), {&kFloatLetter, 1}); }

/// The depth field of a header: how many codes there are, then perhaps a letter.
BitDepth depthOfField(std::string_view field)
{
    const int32_t codes = takeInteger(field).value_or(0);
    const BitDepth depth = outDepthOfLength(codes > 0 ? static_cast<uint32_t>(codes) : 0);
    return depth == BIT_DEPTH_16i && isFloatLetter(field) ? BIT_DEPTH_16f : depth;
}

/// What the name of the file tells, as in "lin_to10.lut": behind its first "to" the number of bits, then perhaps a
/// letter.
BitDepth depthOfFileName(const std::string& fileName)
{
    const std::string name = boost::filesystem::path(fileName).filename().string();
    std::string_view rest = name;
    while (!rest.empty() && !equalsIgnoreCase(rest.substr(0, 2), "to"))
        rest.remove_prefix(1);
    rest.remove_prefix(std::min<std::size_t>(rest.size(), 2));
    const bool isNumber = !rest.empty() && rest.front() >= '0' && rest.front() <= '9';
    const int32_t bits = isNumber ? takeInteger(rest).value_or(0) : 0;
    switch (bits) {
    case 8:
        return BIT_DEPTH_8i;
    case 10:
        return BIT_DEPTH_10i;
    case 12:
        return BIT_DEPTH_12i;
    case 16:
        return isFloatLetter(rest) ? BIT_DEPTH_16f : BIT_DEPTH_16i;
    case 32:
        return isFloatLetter(rest) ? BIT_DEPTH_32f : BIT_DEPTH_UNKNOWN;
    default:
        return BIT_DEPTH_UNKNOWN;
    }
}

/// "LUT: tables length [depth]".
Halvorn1DTable parseHeader(std::string_view line, const std::string& fileName)
{
    line.remove_prefix(kHeaderWord.size());
    const int32_t tables = takeInteger(line).value_or(0);
    const int32_t length = takeInteger(line).value_or(0);
    if ((tables != 1 && tables != 3 && tables != 4) || length < 1) failSyntax(fileName);

    Halvorn1DTable table;
    table.tables = static_cast<uint32_t>(tables);
    table.length = static_cast<uint32_t>(length);
    if (table.length > Lut1DOp::kMaximumLength) fail("Cannot allocate memory for LUT", fileName);

    const std::string_view field = trimmed(line);
    if (field.empty()) return table;
    table.outDepth = depthOfField(field);
    if (table.outDepth == BIT_DEPTH_UNKNOWN) failSyntax(fileName);
    return table;
}

} // namespace

Halvorn1DTable parseHalvorn1DTable(std::istream& stream, const std::string& fileName)
{
    HalvornLines lines(stream, HalvornLines::LINE_FEED);
    const auto nextLine = [&] {
        const std::optional<std::string_view> line = lines.next();
        if (stream.bad()) fail("Unknown error for LUT", fileName);
        return line;
    };

    std::optional<std::string_view> line = nextLine();
    if (!line) fail("Premature EOF reading LUT file", fileName);
    Halvorn1DTable table;
    if (equalsIgnoreCase(line->substr(0, kHeaderWord.size()), kHeaderWord)) {
        table = parseHeader(*line, fileName);
        line = nextLine();
    } else if (line->front() >= '0' && line->front() <= '9') {
        table.tables = 1;
        table.length = kLengthWithoutHeader;
    } else {
        failSyntax(fileName);
    }
    table.inDepth = inDepthOfLength(table.length);
    if (table.outDepth == BIT_DEPTH_UNKNOWN) table.outDepth = depthOfFileName(fileName);
    if (table.outDepth == BIT_DEPTH_UNKNOWN) table.outDepth = outDepthOfLength(table.length);

    const std::size_t count = static_cast<std::size_t>(table.tables) * table.length;
    for (; table.values.size() < count; line = nextLine()) {
        if (!line) fail("Premature EOF reading LUT file", fileName);
        // What is no number is 0, and of a larger one the low bits count.
        table.values.push_back(static_cast<uint16_t>(takeInteger(*line).value_or(0)));
    }
    if (line) failSyntax(fileName);
    return table;
}

} // namespace Color
