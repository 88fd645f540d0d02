#include "xml/arrayMgt.h"

namespace Color::Xml::Reader {

ArrayMgt::~ArrayMgt() = default;

} // namespace Color::Xml::Reader
