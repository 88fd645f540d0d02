#include "morvane/transformDescription.h"

#include "transform/CDLOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/functionOp.h"
#include "transform/gammaOp.h"
#include "transform/gamutMapOp.h"
#include "transform/hueVectorOp.h"
#include "transform/logOp.h"
#include "transform/lut1DOp.h"
#include "transform/lut3DOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "transform/referenceOp.h"
#include "utils/numberText.h"

#include <array>
#include <cmath>
#include <vector>

namespace Morvane_2015_1_42::Impl {

namespace {

using Callbacks = Transform::ContentCallbacks;
using FieldWriter = void (*)(const Color::Op& op, Callbacks& callbacks);

void addField(Callbacks& callbacks, const std::string& label, const std::string& value)
{
    callbacks.addField(label.c_str(), value.c_str());
}

void addDescriptions(Callbacks& callbacks, const Color::Descriptions& descriptions)
{
    for (const std::string& description : descriptions)
        addField(callbacks, "Description", description);
}

std::string textOf(float value) { return Color::toText(value); }

std::string textOf(double value)
{
    // Files hold many numbers in single precision, and the text of that is the shorter one.
    const auto single = static_cast<float>(value);
    return single == value ? Color::toText(single) : Color::toText(value);
}

/// The values in one line, separated by blanks.
template <class Value>
std::string lineOf(const Value* values, std::size_t count)
{
    std::string line;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) line += ' ';
        line += textOf(values[i]);
    }
    return line;
}

std::string lineOf(const std::vector<double>& values) { return lineOf(values.data(), values.size()); }

void addLut1DFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& lut = static_cast<const Color::Lut1DOp&>(op);
    callbacks.addField("Interpolation", Color::Lut1DOp::getInterpolationName(lut.getInterpolation()));
    if (lut.isHalfDomain()) callbacks.addField("Half Domain", "true");
    if (lut.hasRawHalfs()) callbacks.addField("Raw Halfs", "true");
    callbacks.addField("Hue Adjustment", Color::Lut1DOp::getHueAdjustName(lut.getHueAdjust()));
    addField(callbacks, "Array Dimension", std::to_string(lut.getArray().getLength()));
}

void addLut3DFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& lut = static_cast<const Color::Lut3DOp&>(op);
    callbacks.addField("Interpolation", Color::Lut3DOp::getInterpolationName(lut.getInterpolation()));
    addField(callbacks, "Array Dimension", std::to_string(lut.getArray().getLength()));
}

void addMatrixFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& matrix = static_cast<const Color::MatrixOp&>(op);
    const std::size_t length = matrix.getArray().getLength();
    for (std::size_t row = 0; row < length; ++row) {
        addField(callbacks, "Array Row " + std::to_string(row + 1),
                 lineOf(matrix.getArray().getValues().data() + row * length, length));
    }
    if (matrix.hasOffsets()) {
        addField(callbacks, "Offsets", lineOf(matrix.getOffsets().data(), matrix.getOffsets().size()));
    }
}

void addLimit(Callbacks& callbacks, const char* label, double limit)
{
    if (!std::isnan(limit)) addField(callbacks, label, textOf(limit));
}

void addRangeFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& range = static_cast<const Color::RangeOp&>(op);
    addLimit(callbacks, "Min Input Value", range.getMinIn());
    addLimit(callbacks, "Min Output Value", range.getMinOut());
    addLimit(callbacks, "Max Input Value", range.getMaxIn());
    addLimit(callbacks, "Max Output Value", range.getMaxOut());
}

void addReferenceFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& reference = static_cast<const Color::ReferenceOp&>(op);
    if (reference.getAlias().empty()) {
        callbacks.addField("Base Path", getBasePathName(reference.getBasePath()));
        addField(callbacks, "Path", reference.getPath());
    } else {
        addField(callbacks, "Alias", reference.getAlias());
    }
    if (!reference.isUnresolved()) addField(callbacks, "Resolved Path", reference.getResolvedPath());
}

/// The parameter that stands at an index in the lists of red, green and blue.
template <class ChannelsOp>
std::vector<double> parameterOf(const ChannelsOp& op, std::size_t index)
{
    return {op.getParams(0).at(index), op.getParams(1).at(index), op.getParams(2).at(index)};
}

/// A parameter of red, green and blue: one value when it is the same for all of them.
std::string channelsLineOf(const std::vector<double>& values)
{
    const bool isCommon = values[0] == values[1] && values[0] == values[2];
    return isCommon ? textOf(values[0]) : lineOf(values);
}

void addGammaField(Callbacks& callbacks, const char* label, const Color::GammaOp& gamma, std::size_t index)
{
    std::vector<double> values = parameterOf(gamma, index);
    const double alpha = gamma.getParams(3).at(index);
    if (alpha == Color::GammaOp::getIdentityParams(gamma.getStyle()).at(index)) {
        addField(callbacks, label, channelsLineOf(values));
    } else {
        values.push_back(alpha);
        addField(callbacks, label, lineOf(values));
    }
}

void addGammaFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& gamma = static_cast<const Color::GammaOp&>(op);
    callbacks.addField("Gamma Style", Color::GammaOp::getStyleName(gamma.getStyle()));
    addGammaField(callbacks, "gamma", gamma, 0);
    if (Color::GammaOp::getIdentityParams(gamma.getStyle()).size() > 1) addGammaField(callbacks, "offset", gamma, 1);
}

void addExposureContrastFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& exposureContrast = static_cast<const Color::ExposureContrastOp&>(op);
    callbacks.addField("E/C Style", Color::ExposureContrastOp::getStyleName(exposureContrast.getStyle()));
    addField(callbacks, "Exposure", textOf(exposureContrast.getExposure()->get()));
    addField(callbacks, "Contrast", textOf(exposureContrast.getContrast()->get()));
    addField(callbacks, "Pivot", textOf(exposureContrast.getPivot()));
}

void addLogFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& log = static_cast<const Color::LogOp&>(op);
    callbacks.addField("Log Style", Color::LogOp::getStyleName(log.getStyle()));
    if (!Color::LogOp::hasParams(log.getStyle())) return;
    // Gamma, the first parameter, is not told.
    addField(callbacks, "RefWhite", channelsLineOf(parameterOf(log, 1)));
    addField(callbacks, "RefBlack", channelsLineOf(parameterOf(log, 2)));
    addField(callbacks, "Highlight", channelsLineOf(parameterOf(log, 3)));
    addField(callbacks, "Shadow", channelsLineOf(parameterOf(log, 4)));
}

void addCDLFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& cdl = static_cast<const Color::CDLOp&>(op);
    callbacks.addField("CDL Style", Color::CDLOp::getStyleName(cdl.getStyle()));
    addField(callbacks, "Slope", lineOf(cdl.getSlope()));
    addField(callbacks, "Offset", lineOf(cdl.getOffset()));
    addField(callbacks, "Power", lineOf(cdl.getPower()));
}

void addGamutMapFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& gamutMap = static_cast<const Color::GamutMapOp&>(op);
    callbacks.addField("Gamut Map Style", Color::GamutMapOp::getStyleName(gamutMap.getStyle()));
}

void addHueVectorFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& hueVector = static_cast<const Color::HueVectorOp&>(op);
    callbacks.addField("Hue Vector Style", Color::HueVectorOp::getStyleName(hueVector.getStyle()));
    callbacks.addField("Parameter Style", Color::HueVectorOp::getParameterStyleName(hueVector.getParameterStyle()));
    addField(callbacks, "Center", textOf(hueVector.getParameters().at(0)));
    addField(callbacks, "Width", textOf(hueVector.getParameters().at(1)));
    addField(callbacks, "Amount", textOf(hueVector.getParameters().at(2)));
}

void addFunctionFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& function = static_cast<const Color::FunctionOp&>(op);
    callbacks.addField("Function Style", Color::FunctionOp::getStyleName(function.getStyle()));
}

/// The fields of each op beyond those that all ops have, by op type; null where there are none.
constexpr std::array<FieldWriter, Color::kOpTypeCount> makeFieldWriters()
{
    std::array<FieldWriter, Color::kOpTypeCount> writers{};
    writers[Color::OP_LUT_1D] = addLut1DFields;
    writers[Color::OP_INVERSE_LUT_1D] = addLut1DFields;
    writers[Color::OP_LUT_3D] = addLut3DFields;
    writers[Color::OP_MATRIX] = addMatrixFields;
    writers[Color::OP_RANGE] = addRangeFields;
    writers[Color::OP_REFERENCE] = addReferenceFields;
    writers[Color::OP_GAMMA] = addGammaFields;
    writers[Color::OP_EXPOSURE_CONTRAST] = addExposureContrastFields;
    writers[Color::OP_LOG] = addLogFields;
    writers[Color::OP_CDL] = addCDLFields;
    writers[Color::OP_GAMUT_MAP] = addGamutMapFields;
    writers[Color::OP_HUE_VECTOR] = addHueVectorFields;
    writers[Color::OP_FUNCTION] = addFunctionFields;
    return writers;
}

constexpr std::array<FieldWriter, Color::kOpTypeCount> kFieldWriters = makeFieldWriters();

void describeOp(const Color::Op& op, Callbacks& callbacks)
{
    callbacks.beginSection(op.getOpTypeName().c_str());
    if (op.getBypass()->get()) callbacks.addField("Bypass", "true");
    addDescriptions(callbacks, op.getDescriptions());
    if (const FieldWriter addOwnFields = kFieldWriters[static_cast<std::size_t>(op.getOpType())]) {
        addOwnFields(op, callbacks);
    }
    callbacks.endSection();
}

} // namespace

void describe(const Color::Transform& transform, Callbacks& callbacks)
{
    callbacks.beginSection("Transform");
    addField(callbacks, "Input Descriptor", transform.getInputDescriptor());
    addField(callbacks, "Output Descriptor", transform.getOutputDescriptor());
    addField(callbacks, "Nickname", transform.getName());
    if (!transform.getInverseOf().empty()) addField(callbacks, "Inverse Of", transform.getInverseOf());
    addDescriptions(callbacks, transform.getDescriptions());
    const Color::OpList& ops = transform.getOpList();
    for (std::size_t i = 0; i < ops.size(); ++i)
        describeOp(*ops.get(i), callbacks);
    callbacks.endSection();
}

} // namespace Morvane_2015_1_42::Impl
