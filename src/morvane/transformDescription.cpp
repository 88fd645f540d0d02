#include "morvane/transformDescription.h"

#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "utils/numberText.h"

#include <array>
#include <cmath>

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

/// The values in one line, separated by blanks.
std::string lineOf(const float* values, std::size_t count)
{
    std::string line;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) line += ' ';
        line += Color::toText(values[i]);
    }
    return line;
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
    if (std::isnan(limit)) return;
    // Files hold single precision, and its text is the shorter one.
    const auto single = static_cast<float>(limit);
    addField(callbacks, label, single == limit ? Color::toText(single) : Color::toText(limit));
}

void addRangeFields(const Color::Op& op, Callbacks& callbacks)
{
    const auto& range = static_cast<const Color::RangeOp&>(op);
    addLimit(callbacks, "Min Input Value", range.getMinIn());
    addLimit(callbacks, "Min Output Value", range.getMinOut());
    addLimit(callbacks, "Max Input Value", range.getMaxIn());
    addLimit(callbacks, "Max Output Value", range.getMaxOut());
}

/// The fields of each op beyond those that all ops have, by op type; null where there are none.
constexpr std::array<FieldWriter, Color::kOpTypeCount> makeFieldWriters()
{
    std::array<FieldWriter, Color::kOpTypeCount> writers{};
    writers[Color::OP_MATRIX] = addMatrixFields;
    writers[Color::OP_RANGE] = addRangeFields;
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
