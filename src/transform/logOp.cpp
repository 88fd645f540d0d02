#include "transform/logOp.h"

#include "transform/opList.h"
#include "transform/opParameters.h"
#include "transform/styleNames.h"
#include "utils/exception.h"

#include <algorithm>
#include <memory>

namespace Color {

namespace {

constexpr const char* kStyleNames[] = {"log10", "log2", "antiLog10", "antiLog2", "logToLin", "linToLog"};

constexpr std::size_t kParamCount = 5;
constexpr double kGammaBound = static_cast<double>(0.01F);

LogOp::Style inverseOf(LogOp::Style style)
{
    switch (style) {
    case LogOp::STYLE_LOG10:
        return LogOp::STYLE_ANTI_LOG10;
    case LogOp::STYLE_LOG2:
        return LogOp::STYLE_ANTI_LOG2;
    case LogOp::STYLE_ANTI_LOG10:
        return LogOp::STYLE_LOG10;
    case LogOp::STYLE_ANTI_LOG2:
        return LogOp::STYLE_LOG2;
    case LogOp::STYLE_LOG_TO_LIN:
        return LogOp::STYLE_LIN_TO_LOG;
    case LogOp::STYLE_LIN_TO_LOG:
        return LogOp::STYLE_LOG_TO_LIN;
    }
    return style;
}

/// A NaN is greater than nothing.
void checkGreater(const char* name, double value, const char* otherName, double other)
{
    const bool isGreater = value > other;
    if (!isGreater) {
        raise(LogCategory::TRANSFORM_LOG, ErrorIds::LOG_PARAMETERS_OUT_OF_ORDER, name, value, otherName, other);
    }
}

void checkParams(const LogOp::Params& params)
{
    const double gamma = params[0];
    const bool isUsableGamma = gamma > kGammaBound; // a NaN is not
    if (!isUsableGamma) {
        raise(LogCategory::TRANSFORM_LOG, ErrorIds::LOG_PARAMETER_TOO_SMALL, "gamma", gamma, kGammaBound);
    }
    checkGreater("refWhite", params[1], "refBlack", params[2]);
    checkGreater("highlight", params[3], "shadow", params[4]);
}

} // namespace

LogOp::LogOp() : LogOp(BIT_DEPTH_32f, BIT_DEPTH_32f) {}

LogOp::LogOp(BitDepth in, BitDepth out) : LogOp(in, out, {}, {}, {}) {}

LogOp::LogOp(BitDepth in, BitDepth out, const std::string& id, const std::string& name,
             const Descriptions& descriptions)
    : Op(in, out, id, name, descriptions), m_style(STYLE_LOG10)
{}

LogOp::LogOp(BitDepth in, BitDepth out, Style style) : Op(in, out), m_style(style) {}

LogOp::LogOp(BitDepth in, BitDepth out, Style style, const Params& red, const Params& green, const Params& blue)
    : Op(in, out), m_style(style), m_params{red, green, blue}
{}

Op* LogOp::clone() const { return new LogOp(*this); }

void LogOp::validate()
{
    Op::validate();
    if (!hasParams(m_style)) return;
    for (const Params& params : m_params) {
        if (params.size() != kParamCount) {
            raise(LogCategory::TRANSFORM_LOG, ErrorIds::LOG_WRONG_PARAMETER_COUNT, kParamCount);
        }
    }
    for (const Params& params : m_params)
        checkParams(params);
}

OpType LogOp::getOpType() const { return OP_LOG; }

const std::string& LogOp::getOpTypeName() const
{
    static const std::string typeName = "Log";
    return typeName;
}

bool LogOp::isEqual(const Op& other) const
{
    const auto* log = dynamic_cast<const LogOp*>(&other);
    return log && Op::isEqual(other) && m_style == log->m_style &&
           std::equal(m_params.begin(), m_params.end(), log->m_params.begin(), areSameValues);
}

void LogOp::appendInverse(OpList& list) const
{
    auto inverse = std::make_unique<LogOp>(getOutBitDepth(), getInBitDepth(), inverseOf(m_style), m_params[0],
                                           m_params[1], m_params[2]);
    inverse->validate();
    list.append(inverse.release());
}

LogOp::Style LogOp::styleNamed(const std::string& text)
{
    const auto style = findStyle<Style>(kStyleNames, text);
    if (!style) raise(LogCategory::TRANSFORM_LOG, ErrorIds::LOG_UNRECOGNIZED_STYLE, text);
    return *style;
}

const char* LogOp::getStyleName(Style style) { return styleNameAt(kStyleNames, style); }

} // namespace Color
