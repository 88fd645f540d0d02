#include "xml/cdlElementTable.h"

#include "utils/exception.h"
#include "utils/text.h"
#include "xml/SOPNodeCCElt.h"
#include "xml/SOPValueElt.h"
#include "xml/colorCorrectionCollectionElt.h"
#include "xml/colorCorrectionElt.h"
#include "xml/colorDecisionElt.h"
#include "xml/colorDecisionListElt.h"
#include "xml/dummyElt.h"
#include "xml/prefixedDescriptionElt.h"
#include "xml/satNodeCCElt.h"
#include "xml/saturationElt.h"

namespace Color::Xml::Reader {

namespace {

using ElementPtr = std::unique_ptr<Element>;

/// Gives null where the element may not stand.
using ElementMaker = ElementPtr (*)(const std::string& name, Element* top, CDLDocument& document,
                                    const ReadContext& context);

template <class Elt>
ElementPtr makeRoot(const std::string& name, Element*, CDLDocument& document, const ReadContext& context)
{
    if (document.hasRoot) return nullptr;
    document.hasRoot = true;
    return std::make_unique<Elt>(name, context);
}

template <class Elt, class Parent>
ElementPtr makeIn(const std::string& name, Element* top, CDLDocument&, const ReadContext& context)
{
    auto* parent = dynamic_cast<Parent*>(top);
    return parent ? std::make_unique<Elt>(name, *parent, context) : nullptr;
}

/// Each correction has its own copy of what stands above it, so a small file could fill the memory.
void checkInheritedSize(const Descriptions& descriptions, CDLDocument& document, const ReadContext& context)
{
    constexpr std::size_t limit = std::size_t{64} << 20;
    for (const std::string& description : descriptions)
        document.inheritedSize += sizeof(Descriptions::value_type) + description.size();
    if (document.inheritedSize <= limit) return;
    raise(LogCategory::XML_READER, ErrorIds::XML_PARSING, "Too many descriptions above corrections", context.line,
          context.getShownFileName());
}

ElementPtr makeColorCorrection(const std::string& name, Element* top, CDLDocument& document, const ReadContext& context)
{
    const auto make = [&](ContainerElt* parent, const Descriptions& descriptions) {
        checkInheritedSize(descriptions, document, context);
        return std::make_unique<ColorCorrectionElt>(name, parent, descriptions, document.transforms, context);
    };
    if (auto* decision = dynamic_cast<ColorDecisionElt*>(top)) return make(decision, decision->getDescriptions());
    if (auto* collection = dynamic_cast<ColorCorrectionCollectionElt*>(top)) {
        return make(collection, collection->getDescriptions());
    }
    const bool isRoot = !top && document.format == CDL_FORMAT_FRAGMENT;
    return isRoot ? make(nullptr, {}) : nullptr;
}

struct ElementRow
{
    const char* name;
    uint32_t formats;
    ElementMaker make;
    const char* refusal;
};

constexpr uint32_t kAllFormats = CDL_FORMAT_LIST | CDL_FORMAT_COLLECTION | CDL_FORMAT_FRAGMENT;
constexpr const char* kNoSOPValue = ": Slope, Offset or Power tags must be under SOPNode";

constexpr ElementRow kRows[] = {
    {"ColorDecisionList", CDL_FORMAT_LIST, makeRoot<ColorDecisionListElt>, ": The ColorDecisionList already exists"},
    {"ColorDecision", CDL_FORMAT_LIST, makeIn<ColorDecisionElt, ColorDecisionListElt>,
     ": ColorDecision must be under a ColorDecisionList"},
    {"ColorCorrectionCollection", CDL_FORMAT_COLLECTION, makeRoot<ColorCorrectionCollectionElt>,
     ": The ColorCorrectionCollection already exists"},
    {"ColorCorrection", kAllFormats, makeColorCorrection,
     ": ColorCorrection must be under a ColorDecision (CDL), ColorCorrectionCollection (CCC), or must be the root "
     "element (CC)"},
    {"SOPNode", kAllFormats, makeIn<SOPNodeCCElt, ColorCorrectionElt>, ": SOPNode must be under a ColorCorrection"},
    {"SatNode", kAllFormats, makeIn<SatNodeCCElt, ColorCorrectionElt>, ": SatNode must be under a ColorCorrection"},
    {"Slope", kAllFormats, makeIn<SOPValueElt, SOPNodeBaseElt>, kNoSOPValue},
    {"Offset", kAllFormats, makeIn<SOPValueElt, SOPNodeBaseElt>, kNoSOPValue},
    {"Power", kAllFormats, makeIn<SOPValueElt, SOPNodeBaseElt>, kNoSOPValue},
    {"Saturation", kAllFormats, makeIn<SaturationElt, SatNodeBaseElt>, ": Saturation tags must be under SatNode"},
    {"Description", kAllFormats, makeIn<PrefixedDescriptionElt, ContainerElt>, ""},
    {"InputDescription", kAllFormats, makeIn<PrefixedDescriptionElt, ContainerElt>, ""},
    {"ViewingDescription", kAllFormats, makeIn<PrefixedDescriptionElt, ContainerElt>, ""},
};

} // namespace

ElementPtr makeCDLElement(const std::string& name, Element* top, CDLDocument& document, const ReadContext& context)
{
    for (const ElementRow& row : kRows) {
        if (!equalsIgnoreCase(name, row.name) || !(row.formats & document.format)) continue;
        if (ElementPtr element = row.make(name, top, document, context)) return element;
        return std::make_unique<DummyElt>(name, top, context, row.refusal);
    }
    return std::make_unique<DummyElt>(name, top, context, ": Unknown element");
}

} // namespace Color::Xml::Reader
