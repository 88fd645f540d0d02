#include "xml/prefixedDescriptionElt.h"

#include "utils/text.h"

namespace Color::Xml::Reader {

namespace {

struct PrefixRow
{
    const char* element;
    const char* prefix;
};

constexpr PrefixRow kOfParents[] = {
    {"ColorDecisionList", "CDL: "}, {"ColorCorrectionCollection", "CCC: "},
    {"ColorDecision", "CD: "},      {"ColorCorrection", "CC: "},
    {"SOPNode", "SOP: "},           {"SatNode", "Sat: "},
};

constexpr PrefixRow kOfDescriptions[] = {
    {"InputDescription", "InputDesc: "},
    {"ViewingDescription", "ViewingDesc: "},
};

template <std::size_t Size>
const char* findPrefix(const PrefixRow (&rows)[Size], const std::string& element)
{
    for (const PrefixRow& row : rows) {
        if (equalsIgnoreCase(element, row.element)) return row.prefix;
    }
    return "";
}

} // namespace

PrefixedDescriptionElt::PrefixedDescriptionElt(const std::string& name, ContainerElt& parent,
                                               const ReadContext& context)
    : DescriptionElt(name, parent, context),
      m_prefix(std::string(findPrefix(kOfParents, parent.getName())) + findPrefix(kOfDescriptions, name))
{}

void PrefixedDescriptionElt::setRawData(std::string_view text, int32_t line)
{
    DescriptionElt::setRawData(m_prefix + std::string(text), line);
}

} // namespace Color::Xml::Reader
