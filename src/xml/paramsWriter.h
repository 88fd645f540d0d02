#pragma once

#include "xml/xmlFormatter.h"

#include <vector>

namespace Color::Xml::Writer {

/// The parameters of one channel, in the order of their names.
using ChannelParams = std::vector<double>;

/// Writes an empty element for each list: one alone is for all colour channels, several are for red, green, blue and,
/// if there is a fourth, alpha.
void writeParams(XmlFormatter& formatter, const char* tagName, const std::vector<const char*>& paramNames,
                 const std::vector<ChannelParams>& channels);

} // namespace Color::Xml::Writer
