#pragma once

#include "xml/CDLElt.h"

namespace Color::Xml::Reader {

/// SOPNode: slope, offset and power of a CDL, all three required.
class SOPNodeBaseElt : public ComplexElt
{
public:
    /// Descriptions go to the op.
    void appendDescription(const std::string& text) override;
    void start(Attributes attributes) override;
    /// Throws 0x302001f, 0x3020020 or 0x3020021 for what is missing.
    void end() override;

    /// Stores the values of the element of this name.
    void setValues(const std::string& elementName, const CDLOp::Params& values);

protected:
    SOPNodeBaseElt(const std::string& name, ContainerElt& parent, CDLOp& op, const ReadContext& context)
        : ComplexElt(name, parent, context), m_op(op)
    {}

private:
    CDLOp& m_op;
    bool m_hasSlope = false;
    bool m_hasOffset = false;
    bool m_hasPower = false;
};

/// SOPNode in an ASC_CDL.
class SOPNodeElt : public SOPNodeBaseElt
{
public:
    SOPNodeElt(const std::string& name, CDLElt& parent, const ReadContext& context)
        : SOPNodeBaseElt(name, parent, parent.getTypedOp(), context)
    {}
};

} // namespace Color::Xml::Reader
