#pragma once

#include "xml/attributes.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader {

/// An op element with the required attribute `style`.
template <class OpClass>
class StyledOpElt : public TypedOpElt<OpClass>
{
public:
    /// Throws 0x3020006 without a style, and as OpClass::styleNamed() does.
    void start(Attributes attributes) override
    {
        TypedOpElt<OpClass>::start(attributes);
        const char* style = findAttribute(attributes, "style");
        if (!style) this->raiseMissing("style");
        this->getTypedOp().setStyle(OpClass::styleNamed(style));
    }

    std::string getStyleName() { return OpClass::getStyleName(this->getTypedOp().getStyle()); }

protected:
    using TypedOpElt<OpClass>::TypedOpElt;
};

} // namespace Color::Xml::Reader
