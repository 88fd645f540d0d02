#include "xml/saturationElt.h"

#include "utils/exception.h"

namespace Color::Xml::Reader {

void SaturationElt::end()
{
    const std::vector<double> values = parseNumbers();
    if (values.size() != 1) {
        raise(LogCategory::XML_READER, ErrorIds::XML_SAT_NON_SINGLE_VALUE, getTypeName(), getCurrentLine(),
              getFileName());
    }
    m_node.setSaturation(values.front());
}

} // namespace Color::Xml::Reader
