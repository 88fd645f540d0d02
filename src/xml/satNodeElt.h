#pragma once

#include "xml/CDLElt.h"

namespace Color::Xml::Reader {

/// SatNode: holds the saturation of a CDL; it may stand empty.
class SatNodeBaseElt : public ComplexElt
{
public:
    /// Descriptions go to the op.
    void appendDescription(const std::string& text) override { m_op.getDescriptions().push_back(text); }
    void start(Attributes) override {}
    void end() override {}

    void setSaturation(double saturation) { m_op.setSaturation(saturation); }

protected:
    SatNodeBaseElt(const std::string& name, ContainerElt& parent, CDLOp& op, const ReadContext& context)
        : ComplexElt(name, parent, context), m_op(op)
    {}

private:
    CDLOp& m_op;
};

/// SatNode in an ASC_CDL.
class SatNodeElt : public SatNodeBaseElt
{
public:
    SatNodeElt(const std::string& name, CDLElt& parent, const ReadContext& context)
        : SatNodeBaseElt(name, parent, parent.getTypedOp(), context)
    {}
};

} // namespace Color::Xml::Reader
