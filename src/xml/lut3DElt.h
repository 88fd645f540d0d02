#pragma once

#include "transform/lut3DOp.h"
#include "xml/arrayMgt.h"
#include "xml/opElt.h"

namespace Color::Xml::Reader {

/// LUT3D.
class Lut3DElt : public TypedOpElt<Lut3DOp>, public ArrayMgt
{
public:
    Lut3DElt(const std::string& name, TransformElt& parent, const ReadContext& context)
        : TypedOpElt(name, parent, context, 0U)
    {}

    void start(Attributes attributes) override;
    /// Takes the grid size three times and 3 components.
    FileArray* updateDimension(const Dimensions& dimensions) override;
    void finalize(std::size_t count) override;

private:
    FileArray m_array;
    uint32_t m_length = 0;
};

} // namespace Color::Xml::Reader
