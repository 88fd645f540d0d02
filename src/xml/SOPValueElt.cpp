#include "xml/SOPValueElt.h"

#include "utils/exception.h"

namespace Color::Xml::Reader {

void SOPValueElt::end()
{
    const CDLOp::Params values = parseNumbers();
    if (values.size() != 3) {
        raise(LogCategory::XML_READER, ErrorIds::XML_SOP_THREE_VALUES_REQUIRED, getTypeName(), getCurrentLine(),
              getFileName());
    }
    m_node.setValues(getName(), values);
}

} // namespace Color::Xml::Reader
