#include "xml/rangeElt.h"

#include "utils/text.h"

namespace Color::Xml::Reader {

namespace {

struct Limit
{
    const char* elementName;
    void (RangeOp::*set)(double);
};

constexpr Limit kLimits[] = {
    {"minInValue", &RangeOp::setMinIn},
    {"maxInValue", &RangeOp::setMaxIn},
    {"minOutValue", &RangeOp::setMinOut},
    {"maxOutValue", &RangeOp::setMaxOut},
};

} // namespace

RangeElt::RangeElt(const std::string& name, TransformElt& parent, const ReadContext& context)
    : TypedOpElt(name, parent, context)
{}

void RangeElt::setLimit(const std::string& elementName, double value)
{
    for (const Limit& limit : kLimits) {
        if (equalsIgnoreCase(elementName, limit.elementName)) (getTypedOp().*limit.set)(value);
    }
}

void RangeElt::end()
{
    getTypedOp().derive();
    TypedOpElt::end();
}

} // namespace Color::Xml::Reader
