#include "xml/colorCorrectionElt.h"

#include "utils/exception.h"
#include "utils/text.h"

#include <boost/make_shared.hpp>
#include <cstdlib>
#include <memory>

namespace Color::Xml::Reader {

namespace {

std::unique_ptr<CDLOp> makeOp(const Descriptions& descriptions)
{
    auto op = std::make_unique<CDLOp>(BIT_DEPTH_32f, BIT_DEPTH_32f, std::string(), std::string(), descriptions);
    const char* style = orEmpty(std::getenv("MORVANE_DEFAULT_CDL_STYLE"));
    if (*style) op->setStyle(CDLOp::styleNamed(style));
    return op;
}

} // namespace

ColorCorrectionElt::ColorCorrectionElt(const std::string& name, ContainerElt* parent, const Descriptions& descriptions,
                                       Transforms& list, const ReadContext& context)
    : ComplexElt(name, parent, context), m_transform(boost::make_shared<Transform>()), m_list(list)
{
    std::unique_ptr<CDLOp> op = makeOp(descriptions);
    m_op = op.get();
    m_transform->getOpList().append(op.release());
}

ColorCorrectionElt::~ColorCorrectionElt() = default;

void ColorCorrectionElt::start(Attributes attributes)
{
    for (; attributes && attributes[0] && *attributes[0]; attributes += 2) {
        if (!equalsIgnoreCase(attributes[0], "id")) continue;
        if (!attributes[1]) {
            raise(LogCategory::XML_READER, ErrorIds::XML_REQUIRED_ATTRIBUTE_EMPTY, "id", getTypeName(),
                  getCurrentLine(), getFileName());
        }
        m_op->setId(attributes[1]);
    }
}

void ColorCorrectionElt::end()
{
    m_op->validate();
    m_list.push_back(m_transform);
}

void ColorCorrectionElt::appendDescription(const std::string& text) { m_op->getDescriptions().push_back(text); }

} // namespace Color::Xml::Reader
