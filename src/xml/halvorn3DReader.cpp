#include "xml/halvorn3DReader.h"

#include "transform/lut3DOp.h"
#include "utils/exception.h"
#include "utils/text.h"
#include "xml/fileExtension.h"
#include "xml/halvornLines.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <fstream>
#include <vector>

namespace Color {

namespace {

using Integers = std::vector<int32_t>;

constexpr std::size_t kGrid = 17;
constexpr std::size_t kChannels = 3;
constexpr std::size_t kValueCount = kGrid * kGrid * kGrid * kChannels;

[[noreturn]] void fail(const std::string& fileName, const char* reason)
{
    raise(LogCategory::XML_HALVORN_3D_READER, ErrorIds::HALVORN_3D_READER_ERROR, "File: " + fileName + reason,
          fileName);
}

[[noreturn]] void failSyntax(const std::string& fileName) { fail(fileName, " not valid. Syntax error."); }

[[noreturn]] void failRowCount(const std::string& fileName)
{
    raise(LogCategory::XML_HALVORN_3D_READER, ErrorIds::HALVORN_3D_READER_WRONG_ROW_COUNT, fileName);
}

Integers parseIntegers(std::string_view line, const std::string& fileName)
{
    const auto isAllowed = [](char c) { return (c >= '0' && c <= '9') || isSpace(c); };
    if (!std::all_of(line.begin(), line.end(), isAllowed)) failSyntax(fileName);
    Integers numbers;
    while (const std::optional<int32_t> number = takeInteger(line))
        numbers.push_back(*number);
    return numbers;
}

/// 0, 64, 128 and so on to 960, then 1023.
bool isMesh(const Integers& numbers)
{
    constexpr int32_t step = 64;
    constexpr int32_t last = 1023;
    if (numbers.size() != kGrid || numbers.back() != last) return false;
    for (std::size_t i = 0; i + 1 < kGrid; ++i) {
        if (numbers[i] != step * static_cast<int32_t>(i)) return false;
    }
    return true;
}

/// The values of all rows.
Integers parseRows(std::istream& stream, const std::string& fileName)
{
    HalvornLines lines(stream, HalvornLines::LINE_FEED_OR_CARRIAGE_RETURN);
    Integers values;
    bool isFirstLine = true;
    for (; const std::optional<std::string_view> line = lines.next(); isFirstLine = false) {
        const Integers numbers = parseIntegers(*line, fileName);
        if (isFirstLine && isMesh(numbers)) continue;
        // What follows a row on its line is not looked at, but on the first line, where it might be a mesh.
        if (numbers.size() < kChannels || (isFirstLine && numbers.size() != kChannels)) failSyntax(fileName);
        if (values.size() == kValueCount) failRowCount(fileName);
        values.insert(values.end(), numbers.begin(), numbers.begin() + kChannels);
    }
    if (stream.bad()) fail(fileName, " not valid. Unknown error.");
    if (values.empty()) fail(fileName, " not valid. Unexpected end of file.");
    if (values.size() != kValueCount) failRowCount(fileName);
    return values;
}

BitDepth depthOf(const Integers& values, const std::string& fileName)
{
    const int32_t largest = *std::max_element(values.begin(), values.end());
    if (largest <= 1023) return BIT_DEPTH_10i;
    if (largest <= 4095) return BIT_DEPTH_12i;
    raise(LogCategory::XML_HALVORN_3D_READER, ErrorIds::HALVORN_3D_READER_INVALID_RANGE, largest, fileName);
}

} // namespace

const char* Halvorn3DReader::getName() const { return "Halvorn 3DL Reader"; }

const char* Halvorn3DReader::getExtension() { return "3dl"; }

void Halvorn3DReader::readBuffer(const char*)
{
    m_transform.reset();
    raise(LogCategory::XML_HALVORN_3D_READER, ErrorIds::HALVORN_3D_READER_BUFFER_UNSUPPORTED);
}

void Halvorn3DReader::readFile(const std::string& fileName)
{
    m_transform.reset();
    std::ifstream stream(fileName);
    if (!stream) fail(fileName, " not found.");
    readStream(stream, fileName);
}

void Halvorn3DReader::readStream(std::istream& stream, const std::string& fileName)
{
    m_transform.reset();
    const Integers values = parseRows(stream, fileName);
    const BitDepth depth = depthOf(values, fileName);
    auto op = std::make_unique<Lut3DOp>(depth, depth, static_cast<uint32_t>(kGrid));
    std::transform(values.begin(), values.end(), op->getArray().getValues().begin(),
                   [](int32_t value) { return static_cast<float>(value); });

    auto transform = boost::make_shared<Transform>();
    transform->getOpList().append(op.release());
    transform->validate();
    m_transform = transform;
}

ColorTransformPtr Halvorn3DReader::getTransform() const { return m_transform; }

bool Halvorn3DReader::isFileSupported(const std::string& fileName) const
{
    return equalsIgnoreCase(getFileExtension(fileName), getExtension());
}

} // namespace Color
