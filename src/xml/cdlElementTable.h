#pragma once

#include "transform/transform.h"
#include "xml/cdlFormat.h"
#include "xml/element.h"

#include <memory>
#include <string>
#include <vector>

namespace Color::Xml::Reader {

/// What the reading of a CDL document has come to.
struct CDLDocument
{
    CDLFormat format = CDL_FORMAT_LIST;
    bool hasRoot = false;                      ///< that of a list or a collection has been met
    std::vector<ColorTransformPtr> transforms; ///< one for each correction that ended
    std::size_t inheritedSize = 0;             ///< of the descriptions that corrections took over, in bytes
};

/// The element that a start tag of this name makes: its own class where it may stand, else a DummyElt. The top of the
/// stack is null at the start of the document. Throws 0x3020001 when the descriptions that corrections take over grow
/// out of bounds.
std::unique_ptr<Element> makeCDLElement(const std::string& name, Element* top, CDLDocument& document,
                                        const ReadContext& context);

} // namespace Color::Xml::Reader
