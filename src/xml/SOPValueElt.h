#pragma once

#include "xml/SOPNodeElt.h"
#include "xml/numbersElt.h"

namespace Color::Xml::Reader {

/// Slope, Offset, Power: three numbers.
class SOPValueElt : public NumbersElt
{
public:
    SOPValueElt(const std::string& name, SOPNodeBaseElt& parent, const ReadContext& context)
        : NumbersElt(name, parent, context), m_node(parent)
    {}

    /// Throws 0x302001e when there are not three.
    void end() override;

private:
    SOPNodeBaseElt& m_node;
};

} // namespace Color::Xml::Reader
