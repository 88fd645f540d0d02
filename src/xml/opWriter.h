#pragma once

#include "transform/op.h"
#include "xml/elementWriter.h"

namespace Color::Xml::Writer {

/// An op as an element of the file.
class OpWriter : public ElementWriter
{
public:
    void write() const override;

    virtual const Op& getOp() const { return m_op; }
    virtual const char* getTagName() const = 0;
    /// Appends to the list. A derived class calls this one first.
    virtual void getAttributes(XmlFormatter::Attributes& attributes) const;

protected:
    /// The op must outlive the writer.
    OpWriter(XmlFormatter& formatter, const Op& op) : ElementWriter(formatter), m_op(op) {}

    /// What stands in the element after the children that every op can have.
    virtual void writeContent() const {}

    /// An empty element DynamicParameter.
    void writeDynamicParameter(const char* param) const;

private:
    const Op& m_op;
};

/// An op writer that knows the class of its op.
template <class OpClass>
class TypedOpWriter : public OpWriter
{
public:
    TypedOpWriter(XmlFormatter& formatter, const OpClass& op) : OpWriter(formatter, op) {}

    const OpClass& getOp() const override { return static_cast<const OpClass&>(OpWriter::getOp()); }
};

/// An op writer with the attribute `style`.
template <class OpClass>
class StyledOpWriter : public TypedOpWriter<OpClass>
{
public:
    using TypedOpWriter<OpClass>::TypedOpWriter;

    void getAttributes(XmlFormatter::Attributes& attributes) const override
    {
        TypedOpWriter<OpClass>::getAttributes(attributes);
        attributes.emplace_back("style", OpClass::getStyleName(this->getOp().getStyle()));
    }
};

} // namespace Color::Xml::Writer
