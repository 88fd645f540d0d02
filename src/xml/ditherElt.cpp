#include "xml/ditherElt.h"

#include "xml/attributes.h"

namespace Color::Xml::Reader {

void DitherElt::start(Attributes attributes)
{
    constexpr const char* word = "Dither Bit Depth";
    TypedOpElt::start(attributes);
    const char* depth = findAttribute(attributes, "ditherBitDepth");
    if (!depth) raiseMissing(word);
    getTypedOp().setDitherBitDepth(parseBitDepth(word, depth));
}

} // namespace Color::Xml::Reader
