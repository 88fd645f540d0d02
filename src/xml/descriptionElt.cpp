#include "xml/descriptionElt.h"

namespace Color::Xml::Reader {

void DescriptionElt::setRawData(std::string_view text, int32_t) { getParent().appendDescription(std::string(text)); }

} // namespace Color::Xml::Reader
