#include "xml/colorDecisionElt.h"

namespace Color::Xml::Reader {

Descriptions ColorDecisionElt::getDescriptions() const
{
    Descriptions descriptions = m_descriptions;
    const Descriptions& ofList = m_list.getDescriptions();
    descriptions.insert(descriptions.end(), ofList.begin(), ofList.end());
    return descriptions;
}

} // namespace Color::Xml::Reader
