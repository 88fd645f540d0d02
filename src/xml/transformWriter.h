#pragma once

#include "transform/transform.h"
#include "xml/elementWriter.h"

namespace Color::Xml::Writer {

/// A transform as the element ProcessList. Ops that the format has no element for are left out.
class TransformWriter : public ElementWriter
{
public:
    /// The transform must outlive the writer.
    TransformWriter(XmlFormatter& formatter, const Transform& transform)
        : ElementWriter(formatter), m_transform(transform)
    {}

    void write() const override;

private:
    XmlFormatter::Attributes getAttributes() const;
    /// The lowest version that holds all ops, those included that are left out.
    float getVersion() const;
    void writeDescriptors() const;
    void writeOps() const;

    const Transform& m_transform;
};

} // namespace Color::Xml::Writer
