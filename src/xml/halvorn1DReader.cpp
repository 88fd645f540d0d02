#include "xml/halvorn1DReader.h"

#include "transform/lut1DOp.h"
#include "utils/exception.h"
#include "utils/text.h"
#include "xml/fileExtension.h"
#include "xml/halvorn1DTable.h"

#include <Imath/half.h>
#include <boost/make_shared.hpp>
#include <fstream>

namespace Color {

namespace {

constexpr uint32_t kChannels = 3;

float floatOfHalf(uint16_t bits)
{
    Imath::half half;
    half.setBits(bits);
    return half;
}

std::unique_ptr<Lut1DOp> makeOp(const Halvorn1DTable& table)
{
    const HalfFlags flags = table.inDepth == BIT_DEPTH_16f ? HALF_FLAGS_HALF_DOMAIN : HALF_FLAGS_NONE;
    auto op = std::make_unique<Lut1DOp>(table.inDepth, table.outDepth, std::string(), std::string(), Descriptions(),
                                        Lut1DOp::INTERPOLATION_DEFAULT, table.length, flags);
    const bool isHalf = table.outDepth == BIT_DEPTH_16f;
    for (std::size_t i = 0; i < table.length; ++i) {
        for (std::size_t channel = 0; channel < kChannels; ++channel) {
            // One table is that of all channels; a fourth would be that of alpha, which the op does not have.
            const std::size_t source = table.tables == 1 ? 0 : channel;
            const uint16_t value = table.values[source * table.length + i];
            op->getArray().setValue(i * kChannels + channel, isHalf ? floatOfHalf(value) : static_cast<float>(value));
        }
    }
    return op;
}

} // namespace

const char* Halvorn1DReader::getName() const { return "Halvorn LUT Reader"; }

const char* Halvorn1DReader::getExtension() { return "lut"; }

void Halvorn1DReader::readBuffer(const char*)
{
    m_transform.reset();
    raise(LogCategory::XML_HALVORN_1D_READER, ErrorIds::HALVORN_1D_READER_BUFFER_UNSUPPORTED);
}

void Halvorn1DReader::readFile(const std::string& fileName)
{
    m_transform.reset();
    std::ifstream stream(fileName);
    if (!stream) {
        raise(LogCategory::XML_HALVORN_1D_READER, ErrorIds::HALVORN_1D_READER_ERROR, "Cannot open LUT file", fileName);
    }
    readStream(stream, fileName);
}

void Halvorn1DReader::readStream(std::istream& stream, const std::string& fileName)
{
    m_transform.reset();
    auto transform = boost::make_shared<Transform>();
    transform->getOpList().append(makeOp(parseHalvorn1DTable(stream, fileName)).release());
    transform->validate();
    m_transform = transform;
}

ColorTransformPtr Halvorn1DReader::getTransform() const { return m_transform; }

bool Halvorn1DReader::isFileSupported(const std::string& fileName) const
{
    return equalsIgnoreCase(getFileExtension(fileName), getExtension());
}

} // namespace Color
