#pragma once

#include "xml/arrayMgt.h"
#include "xml/element.h"

namespace Color::Xml::Reader {

/// Array: the numbers of a matrix or LUT.
class ArrayElt : public PlainElt
{
public:
    /// parent and owner are the same element.
    ArrayElt(const std::string& name, ContainerElt& parent, ArrayMgt& owner, const ReadContext& context);

    void start(Attributes attributes) override;
    void setRawData(std::string_view text, int32_t line) override;
    void end() override;

private:
    ArrayMgt& m_owner;
    FileArray* m_array = nullptr; ///< set by start()
};

} // namespace Color::Xml::Reader
