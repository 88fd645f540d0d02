#pragma once

#include "xml/opWriter.h"

#include <memory>

namespace Color::Xml::Writer {

/// The writer of an op; null for an op that the file format has no element for.
std::unique_ptr<OpWriter> makeOpWriter(XmlFormatter& formatter, const Op& op);

} // namespace Color::Xml::Writer
