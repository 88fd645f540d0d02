#include "xml/iccProfileReader.h"

#include "transform/gammaOp.h"
#include "transform/lut1DOp.h"
#include "transform/matrixOp.h"
#include "transform/referenceOp.h"
#include "utils/exception.h"
#include "utils/text.h"
#include "xml/fileExtension.h"
#include "xml/iccBytes.h"
#include "xml/iccProfile.h"
#include "xml/iccProfileCheck.h"

#include <algorithm>
#include <array>
#include <boost/make_shared.hpp>
#include <fstream>
#include <iterator>
#include <vector>

namespace Color {

namespace {

constexpr std::size_t kChannels = 3;
constexpr uint32_t kColorantTags[kChannels] = {iccSignature("rXYZ"), iccSignature("gXYZ"), iccSignature("bXYZ")};
constexpr uint32_t kCurveTags[kChannels] = {iccSignature("rTRC"), iccSignature("gTRC"), iccSignature("bTRC")};

// Every tag begins with its type and four reserved bytes.
constexpr std::size_t kTagDataAt = 8;

constexpr const char* kAdaptationDescription = "Chromatic adaptation (Bradford) from D65 to ICC PCS D50";

constexpr float kAdaptation[] = {
    1.04788959F,  0.02292064F, -0.05021831F, // X
    0.02958442F,  0.99048191F, -0.01707953F, // Y
    -0.00925219F, 0.01507304F, 0.75166893F,  // Z
};

bool hasType(const std::string& tag, uint32_t type) { return tag.size() >= kTagDataAt && bigEndian32(tag, 0) == type; }

[[noreturn]] void fail(const std::string& reason, const std::string& fileName)
{
    raise(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_ERROR, reason, fileName);
}

/// The whole file, or as much of it as shows that it is too large: nothing that the file tells of itself decides how
/// much memory is taken.
std::string readBytes(const std::string& fileName)
{
    std::ifstream stream(fileName, std::ios::binary);
    if (!stream) fail("the file cannot be opened", fileName);
    std::string bytes;
    std::array<char, 1 << 16> block;
    while (bytes.size() <= kICCMaximumSize && stream) {
        stream.read(block.data(), block.size());
        bytes.append(block.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad()) fail("the file cannot be read", fileName);
    return bytes;
}

void checkProfile(std::string_view bytes, const std::string& fileName)
{
    const ICCProfileCheck check = checkICCProfile(bytes);
    if (check.status == ICCProfileStatus::CriticalError) fail(check.report, fileName);
    if (check.status != ICCProfileStatus::Compliant)
        logFailure(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_ERROR, check.report, fileName);
}

void checkModel(const ICCProfile& profile, const std::string& fileName)
{
    const auto hasAll = [&](const auto& tags) {
        return std::all_of(std::begin(tags), std::end(tags), [&](uint32_t tag) { return profile.hasTag(tag); });
    };
    if (!hasAll(kColorantTags) || !hasAll(kCurveTags))
        raise(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_UNSUPPORTED_MODEL, fileName);
}

void setDescriptors(const ICCProfile& profile, Transform& transform, const std::string& fileName)
{
    const uint32_t connectionSpace = profile.getConnectionSpace();
    if (connectionSpace != iccSignature("XYZ ")) {
        raise(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_UNSUPPORTED_CONNECTION_SPACE,
              iccSignatureText(connectionSpace), fileName);
    }
    const uint32_t deviceSpace = profile.getDeviceSpace();
    if (deviceSpace != iccSignature("RGB ")) {
        raise(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_UNSUPPORTED_COLOR_SPACE, iccSignatureText(deviceSpace),
              fileName);
    }
    transform.setInputDescriptor("ICC XYZ PCS");
    transform.setOutputDescriptor("device RGB");
}

void describeLast(OpList& ops, const char* description)
{
    ops.get(ops.size() - 1)->getDescriptions().emplace_back(description);
}

void appendAdaptation(OpList& ops)
{
    auto op = std::make_unique<MatrixOp>(BIT_DEPTH_16f, BIT_DEPTH_16f);
    op->setMatrix3x3(kAdaptation);
    ops.append(op.release());
    describeLast(ops, kAdaptationDescription);
}

/// X, Y and Z of a colorant. Bytes behind the triple that make no further one are padding.
std::array<float, 3> parseColorant(const std::string& tag, const std::string& fileName)
{
    constexpr float fraction = 1.5258789e-5F; // 1 / 65536: the numbers are s15.16
    constexpr std::size_t tripleSize = 12;
    if (!hasType(tag, iccSignature("XYZ ")) || (tag.size() - kTagDataAt) / tripleSize != 1)
        raise(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_ILLEGAL_MATRIX_TAG, fileName);
    std::array<float, 3> xyz{};
    for (std::size_t i = 0; i < xyz.size(); ++i)
        xyz[i] = static_cast<float>(static_cast<int32_t>(bigEndian32(tag, kTagDataAt + 4 * i))) * fraction;
    return xyz;
}

/// Colorants that cannot be inverted leave, as with every matrix, an op that does nothing.
void appendPrimaries(const ICCProfile& profile, OpList& ops, const std::string& fileName)
{
    std::array<float, 9> rows{};
    for (std::size_t channel = 0; channel < kChannels; ++channel) {
        const std::array<float, 3> xyz = parseColorant(profile.readTag(kColorantTags[channel]), fileName);
        for (std::size_t row = 0; row < xyz.size(); ++row)
            rows[row * kChannels + channel] = xyz[row];
    }
    MatrixOp deviceToConnection(BIT_DEPTH_16f, BIT_DEPTH_16f);
    deviceToConnection.setMatrix3x3(rows.data());
    deviceToConnection.validate();
    deviceToConnection.appendInverse(ops);
    describeLast(ops, "RGB primary matrix from ICC profile");
}

void appendGamutMap(OpList& ops)
{
    auto op = std::make_unique<ReferenceOp>(BIT_DEPTH_16f, BIT_DEPTH_16f);
    op->setAlias("defaultGamutMap");
    ops.append(op.release());
    // Not what this op does, but what it has always been called.
    describeLast(ops, kAdaptationDescription);
}

using Curve = std::vector<uint16_t>;

/// Curves given as a formula (type 'para') are not understood.
Curve parseCurve(const std::string& tag, const std::string& fileName)
{
    constexpr std::size_t countSize = 4;
    constexpr std::size_t valuesAt = kTagDataAt + countSize;
    if (!hasType(tag, iccSignature("curv")) || tag.size() < valuesAt ||
        bigEndian32(tag, kTagDataAt) > (tag.size() - valuesAt) / sizeof(uint16_t)) {
        raise(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_ILLEGAL_CURVE_TAG, fileName);
    }
    Curve curve(bigEndian32(tag, kTagDataAt));
    for (std::size_t i = 0; i < curve.size(); ++i)
        curve[i] = bigEndian16(tag, valuesAt + sizeof(uint16_t) * i);
    return curve;
}

void appendLinear(OpList& ops)
{
    ops.append(
        new Lut1DOp(BIT_DEPTH_16f, BIT_DEPTH_16i, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT, 2, HALF_FLAGS_NONE));
}

void appendGamma(const std::array<Curve, kChannels>& curves, OpList& ops)
{
    // The single entry of a curve is a u8Fixed8 number. Divided by 65535 as any entry, times 65535 and 1 / 256, it is
    // this to the last bit.
    const auto gammaOf = [](const Curve& curve) { return GammaOp::Params{curve[0] * 0.00390625}; };
    ops.append(new GammaOp(BIT_DEPTH_16f, BIT_DEPTH_16i, GammaOp::STYLE_BASIC_REV, gammaOf(curves[0]),
                           gammaOf(curves[1]), gammaOf(curves[2])));
}

/// The profile holds the way from the device; what is appended goes back.
void appendInverseTable(const std::array<Curve, kChannels>& curves, OpList& ops)
{
    Lut1DOp fromDevice(BIT_DEPTH_16i, BIT_DEPTH_16f, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT,
                       static_cast<uint32_t>(curves[0].size()), HALF_FLAGS_NONE);
    Array::Values& values = fromDevice.getArray().getValues();
    for (std::size_t i = 0; i < curves[0].size(); ++i) {
        for (std::size_t channel = 0; channel < kChannels; ++channel)
            values[i * kChannels + channel] = static_cast<float>(curves[channel][i]) / 65535.0F;
    }
    fromDevice.validate();
    fromDevice.appendInverse(ops);
}

void appendToneCurves(const ICCProfile& profile, OpList& ops, const std::string& fileName)
{
    std::array<Curve, kChannels> curves;
    for (std::size_t channel = 0; channel < kChannels; ++channel)
        curves[channel] = parseCurve(profile.readTag(kCurveTags[channel]), fileName);
    const std::size_t count = curves[0].size();
    if (curves[1].size() != count || curves[2].size() != count)
        raise(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_ILLEGAL_CURVE_TAG, fileName);

    if (count == 0) {
        appendLinear(ops);
    } else if (count == 1) {
        appendGamma(curves, ops);
    } else {
        appendInverseTable(curves, ops);
    }
    describeLast(ops, "Tone response curve from ICC profile");
}

} // namespace

const char* ICCProfileReader::getName() const { return "ICC Profile Reader"; }

void ICCProfileReader::readBuffer(const char*)
{
    m_transform.reset();
    raise(LogCategory::XML_ICC_READER, ErrorIds::ICC_READER_BUFFER_UNSUPPORTED);
}

void ICCProfileReader::readFile(const std::string& fileName)
{
    m_transform.reset();
    readProfile(readBytes(fileName), fileName);
}

void ICCProfileReader::readProfile(std::string_view bytes, const std::string& fileName)
{
    m_transform.reset();
    checkProfile(bytes, fileName);
    const ICCProfile profile(bytes);
    if (!profile.isOpen()) fail("Little CMS says: " + profile.getError(), fileName);
    checkModel(profile, fileName);

    auto transform = boost::make_shared<Transform>();
    setDescriptors(profile, *transform, fileName);
    OpList& ops = transform->getOpList();
    appendAdaptation(ops);
    appendPrimaries(profile, ops, fileName);
    appendGamutMap(ops);
    appendToneCurves(profile, ops, fileName);
    transform->validate();
    m_transform = transform;
}

ColorTransformPtr ICCProfileReader::getTransform() const { return m_transform; }

bool ICCProfileReader::isFileSupported(const std::string& fileName) const
{
    const std::string extension = getFileExtension(fileName);
    return std::any_of(std::begin(kExtensions), std::end(kExtensions),
                       [&](const char* known) { return equalsIgnoreCase(extension, known); });
}

} // namespace Color
