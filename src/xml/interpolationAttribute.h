#pragma once

#include "utils/exception.h"
#include "xml/element.h"

#include <string>

namespace Color::Xml::Reader {

/// Gives the LUT the interpolation of this name, in exact case. A name that is none is logged and not refused.
template <class LutOp>
void readInterpolation(const Element& element, LutOp& op, const std::string& name)
{
    const auto interpolation = LutOp::interpolationNamed(name);
    if (interpolation == LutOp::INTERPOLATION_DEFAULT) {
        logFailure(LogCategory::XML_READER, ErrorIds::XML_ATTRIBUTE_VALUE_ILLEGAL, "Interpolation", name,
                   element.getTypeName(), element.getCurrentLine(), element.getFileName());
    }
    op.setInterpolation(interpolation);
}

} // namespace Color::Xml::Reader
