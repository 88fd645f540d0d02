#pragma once

#include "xml/element.h"

#include <memory>
#include <string>

namespace Color::Xml::Reader {

/// The element that a start tag of this name makes in a ctf container: its own class where it may stand, else a
/// DummyElt. Throws 0x3020011 for the reserved name IndexMap.
std::unique_ptr<Element> makeChildElement(const std::string& name, ContainerElt& parent, const ReadContext& context);

} // namespace Color::Xml::Reader
