#include "xml/opElt.h"

#include "utils/exception.h"
#include "xml/attributes.h"

#include <optional>
#include <utility>

namespace Color::Xml::Reader {

namespace {
constexpr const char* kInBitDepthWord = "Input Bit Depth";
constexpr const char* kOutBitDepthWord = "Output Bit Depth";
} // namespace

OpElt::OpElt(const std::string& name, TransformElt& parent, const ReadContext& context, std::unique_ptr<Op> op)
    : ContainerElt(name, context), m_parent(parent), m_ownedOp(std::move(op)), m_op(*m_ownedOp)
{}

OpElt::~OpElt() = default;

void OpElt::start(Attributes attributes)
{
    m_parent.getTransform()->getOpList().append(m_ownedOp.release());

    std::optional<BitDepth> in;
    std::optional<BitDepth> out;
    forEachAttribute(attributes, [&](const char* name, const char* value) {
        if (equalsIgnoreCase(name, "id")) {
            m_op.setId(value);
        } else if (equalsIgnoreCase(name, "name")) {
            m_op.setName(value);
        } else if (equalsIgnoreCase(name, "inBitDepth")) {
            in = parseBitDepth(kInBitDepthWord, value);
        } else if (equalsIgnoreCase(name, "outBitDepth")) {
            out = parseBitDepth(kOutBitDepthWord, value);
        } else if (equalsIgnoreCase(name, "bypass")) {
            parseBypass(value);
        }
    });
    if (!in) raiseMissing(kInBitDepthWord);
    if (!out) raiseMissing(kOutBitDepthWord);
    m_op.setInBitDepth(*in);
    m_op.setOutBitDepth(*out);
}

void OpElt::end() { m_op.validate(); }

void OpElt::appendDescription(const std::string& text) { m_op.getDescriptions().push_back(text); }

BitDepth OpElt::parseBitDepth(const char* word, const char* text) const
{
    const BitDepth depth = getBitDepth(text);
    if (depth == BIT_DEPTH_UNKNOWN) {
        raise(LogCategory::XML_READER, ErrorIds::XML_ATTRIBUTE_VALUE_ILLEGAL, word, text, getTypeName(),
              getCurrentLine(), getFileName());
    }
    return depth;
}

void OpElt::raiseMissing(const char* word) const
{
    raise(LogCategory::XML_READER, ErrorIds::XML_REQUIRED_ATTRIBUTE_MISSING, word, getTypeName(), getCurrentLine(),
          getFileName());
}

void OpElt::parseBypass(const char* text)
{
    if (!equalsIgnoreCase(trimmed(text), "true")) {
        raise(LogCategory::XML_READER, ErrorIds::XML_BYPASS_ILLEGAL, getTypeName(), text, getCurrentLine(),
              getFileName());
    }
    m_op.getBypass()->set(true);
}

} // namespace Color::Xml::Reader
