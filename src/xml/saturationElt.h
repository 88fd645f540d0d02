#pragma once

#include "xml/numbersElt.h"
#include "xml/satNodeElt.h"

namespace Color::Xml::Reader {

/// Saturation: one number.
class SaturationElt : public NumbersElt
{
public:
    SaturationElt(const std::string& name, SatNodeBaseElt& parent, const ReadContext& context)
        : NumbersElt(name, parent, context), m_node(parent)
    {}

    /// Throws 0x3020022 when there is not one.
    void end() override;

private:
    SatNodeBaseElt& m_node;
};

} // namespace Color::Xml::Reader
