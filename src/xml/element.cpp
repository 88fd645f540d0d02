#include "xml/element.h"

namespace Color::Xml::Reader {

Element::~Element() = default;

bool Element::isDummy() const { return false; }

float ContainerElt::getVersion() const { return 1.6f; }

void PlainElt::start(Attributes) {}

void PlainElt::end() {}

} // namespace Color::Xml::Reader
