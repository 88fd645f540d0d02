#pragma once

#include "xml/opElt.h"

#include <memory>
#include <optional>
#include <string>

namespace Color::Xml::Reader {

/// The op that an element of this name stands for, at any version; nothing when it is no op element.
std::optional<OpType> findOpElement(const std::string& name);

/// The element class that reads ops of this kind in a file of this version; null when such files cannot hold them.
std::unique_ptr<OpElt> makeOpElement(OpType type, float version, const std::string& name, TransformElt& parent,
                                     const ReadContext& context);

} // namespace Color::Xml::Reader
