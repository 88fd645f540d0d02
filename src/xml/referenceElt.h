#pragma once

#include "transform/referenceOp.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader {

/// Reference: an alias, or a path with or without a base. It is read unresolved.
class ReferenceElt : public TypedOpElt<ReferenceOp>
{
public:
    ReferenceElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : TypedOpElt(name, parent, context)
    {}

    void start(Attributes attributes) override;

private:
    [[noreturn]] void raiseNotWithAlias(const char* word) const;
};

} // namespace Color::Xml::Reader
