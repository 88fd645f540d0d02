#include "xml/childElementTable.h"

#include "utils/exception.h"
#include "utils/text.h"
#include "xml/ECParamsElt.h"
#include "xml/SOPValueElt.h"
#include "xml/arrayElt.h"
#include "xml/descriptionElt.h"
#include "xml/descriptorElt.h"
#include "xml/dummyElt.h"
#include "xml/dynamicParamElt.h"
#include "xml/gammaParamsElt.h"
#include "xml/hueVectorParamsElt.h"
#include "xml/logParamsElt.h"
#include "xml/metadataElt.h"
#include "xml/opElt.h"
#include "xml/rangeValueElt.h"
#include "xml/saturationElt.h"
#include "xml/transformElt.h"

namespace Color::Xml::Reader {

namespace {

using ElementPtr = std::unique_ptr<Element>;

/// Gives null where the parent is not the right one.
using ChildMaker = ElementPtr (*)(const std::string& name, ContainerElt& parent, const ReadContext& context);

template <class Elt, class Parent>
ElementPtr makeIn(const std::string& name, ContainerElt& parent, const ReadContext& context)
{
    auto* typedParent = dynamic_cast<Parent*>(&parent);
    return typedParent ? std::make_unique<Elt>(name, *typedParent, context) : nullptr;
}

ElementPtr makeArray(const std::string& name, ContainerElt& parent, const ReadContext& context)
{
    auto* owner = dynamic_cast<ArrayMgt*>(&parent);
    if (!owner) return nullptr;
    if (owner->isCompleted()) {
        return std::make_unique<DummyElt>(name, &parent, context, ": Only one Color::Array allowed per op");
    }
    return std::make_unique<ArrayElt>(name, parent, *owner, context);
}

ElementPtr refuseIndexMap(const std::string&, ContainerElt& parent, const ReadContext&)
{
    raise(LogCategory::XML_READER, ErrorIds::XML_ATTRIBUTE_NOT_SUPPORTED, "IndexMap", parent.getFileName(),
          parent.getCurrentLine());
}

ElementPtr makeGammaParams(const std::string& name, ContainerElt& parent, const ReadContext& context)
{
    auto* gamma = dynamic_cast<GammaElt*>(&parent);
    return gamma ? gamma->createGammaParamsElt(name, context) : nullptr;
}

ElementPtr makeLogParams(const std::string& name, ContainerElt& parent, const ReadContext& context)
{
    auto* logElt = dynamic_cast<LogElt*>(&parent);
    return logElt && logElt->takesParams() ? std::make_unique<LogParamsElt>(name, *logElt, context) : nullptr;
}

struct ChildRow
{
    const char* name;
    ChildMaker make;
    const char* refusal;
};

constexpr const char* kNoRangeValue = ": Range Value tags not allowed in this element";
constexpr const char* kNoSOPValue = ": Slope, Offset or Power tags not allowed in this element";

constexpr ChildRow kRows[] = {
    {"Info", makeIn<InfoElt, TransformElt>, ": Info not allowed in this element"},
    {"Array", makeArray, ": Color::Array not allowed in this element"},
    {"Description", makeIn<DescriptionElt, ContainerElt>, ""},
    {"InputDescriptor", makeIn<InputDescriptorElt, TransformElt>, ": InputDescriptor not allowed in this element"},
    {"OutputDescriptor", makeIn<OutputDescriptorElt, TransformElt>, ": OutputDescriptor not allowed in this element"},
    {"IndexMap", refuseIndexMap, ""},
    {"minInValue", makeIn<RangeValueElt, RangeElt>, kNoRangeValue},
    {"maxInValue", makeIn<RangeValueElt, RangeElt>, kNoRangeValue},
    {"minOutValue", makeIn<RangeValueElt, RangeElt>, kNoRangeValue},
    {"maxOutValue", makeIn<RangeValueElt, RangeElt>, kNoRangeValue},
    {"GammaParams", makeGammaParams, ": Gamma Params not allowed in this element"},
    {"ECParams", makeIn<ECParamsElt, ExposureContrastElt>, ": E/C Params not allowed in this element"},
    {"DynamicParameter", makeIn<DynamicParamElt, OpElt>, ": Dynamic properties not allowed in this element"},
    {"LogParams", makeLogParams, ": Log Params not allowed in this element"},
    {"HueVecParams", makeIn<HueVectorParamsElt, HueVectorElt>, ": HueVector Params not allowed in this element"},
    {"SOPNode", makeIn<SOPNodeElt, CDLElt>, ": SOPNode not allowed in this element"},
    {"Slope", makeIn<SOPValueElt, SOPNodeBaseElt>, kNoSOPValue},
    {"Offset", makeIn<SOPValueElt, SOPNodeBaseElt>, kNoSOPValue},
    {"Power", makeIn<SOPValueElt, SOPNodeBaseElt>, kNoSOPValue},
    {"SatNode", makeIn<SatNodeElt, CDLElt>, ": SatNode not allowed in this element"},
    {"Saturation", makeIn<SaturationElt, SatNodeBaseElt>, ": Saturation not allowed in this element"},
};

} // namespace

ElementPtr makeChildElement(const std::string& name, ContainerElt& parent, const ReadContext& context)
{
    for (const ChildRow& row : kRows) {
        if (!equalsIgnoreCase(name, row.name)) continue;
        if (ElementPtr element = row.make(name, parent, context)) return element;
        return std::make_unique<DummyElt>(name, &parent, context, row.refusal);
    }
    return std::make_unique<DummyElt>(name, &parent, context, ": Unknown element");
}

} // namespace Color::Xml::Reader
