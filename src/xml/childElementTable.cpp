#include "xml/childElementTable.h"

#include "utils/exception.h"
#include "utils/text.h"
#include "xml/arrayElt.h"
#include "xml/descriptionElt.h"
#include "xml/descriptorElt.h"
#include "xml/dummyElt.h"
#include "xml/dynamicParamElt.h"
#include "xml/metadataElt.h"
#include "xml/opElt.h"
#include "xml/rangeValueElt.h"
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

/// For an element whose parent no reader makes yet.
ElementPtr makeNone(const std::string&, ContainerElt&, const ReadContext&) { return nullptr; }

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
    {"GammaParams", makeNone, ": Gamma Params not allowed in this element"},
    {"ECParams", makeNone, ": E/C Params not allowed in this element"},
    {"DynamicParameter", makeIn<DynamicParamElt, OpElt>, ": Dynamic properties not allowed in this element"},
    {"LogParams", makeNone, ": Log Params not allowed in this element"},
    {"HueVecParams", makeNone, ": HueVector Params not allowed in this element"},
    {"SOPNode", makeNone, ": SOPNode not allowed in this element"},
    {"Slope", makeNone, kNoSOPValue},
    {"Offset", makeNone, kNoSOPValue},
    {"Power", makeNone, kNoSOPValue},
    {"SatNode", makeNone, ": SatNode not allowed in this element"},
    {"Saturation", makeNone, ": Saturation not allowed in this element"},
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
