#pragma once

#include "transform/op.h"
#include "xml/element.h"
#include "xml/transformElt.h"

#include <memory>

namespace Color::Xml::Reader {

/// An op of the file. It makes its op at once and hands it to the transform in start().
class OpElt : public ContainerElt
{
public:
    ~OpElt() override;

    /// A derived class calls this one first.
    void start(Attributes attributes) override;
    /// A derived class calls this one last.
    void end() override;
    std::string getIdentifier() const override { return m_op.getId(); }
    std::string getTypeName() const override { return m_op.getOpTypeName(); }
    void appendDescription(const std::string& text) override;

    Op& getOp() { return m_op; }

protected:
    OpElt(const std::string& name, TransformElt& parent, const ReadContext& context, std::unique_ptr<Op> op);

    /// Throws 0x3020009 for a name that is none.
    BitDepth parseBitDepth(const char* word, const char* text) const;
    /// Throws 0x3020006.
    [[noreturn]] void raiseMissing(const char* word) const;

private:
    void parseBypass(const char* text);

    TransformElt& m_parent;
    std::unique_ptr<Op> m_ownedOp; ///< until start() hands it over
    Op& m_op;
};

/// An op element that knows the class of its op.
template <class OpClass>
class TypedOpElt : public OpElt
{
public:
    OpClass& getTypedOp() { return static_cast<OpClass&>(getOp()); }

protected:
    /// The arguments are those of the op's constructor.
    template <class... Args>
    TypedOpElt(const std::string& name, TransformElt& parent, const ReadContext& context, const Args&... args)
        : OpElt(name, parent, context, std::make_unique<OpClass>(args...))
    {}
};

} // namespace Color::Xml::Reader
