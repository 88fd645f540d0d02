#include "xml/dummyElt.h"

#include "utils/logging.h"

namespace Color::Xml::Reader {

namespace {
constexpr const char* kUnknown = "Unknown";
}

DummyElt::DummyParent::DummyParent(const Element* parent, const ReadContext& context)
    : ContainerElt(parent ? parent->getName() : kUnknown, context, parent ? parent->getLine() : 0), m_parent(parent)
{}

std::string DummyElt::DummyParent::getIdentifier() const { return m_parent ? m_parent->getIdentifier() : kUnknown; }

std::string DummyElt::DummyParent::getTypeName() const { return m_parent ? m_parent->getTypeName() : kUnknown; }

DummyElt::DummyElt(const std::string& name, const Element* parent, const ReadContext& context, const char* reason)
    : DummyElt(name, std::make_unique<DummyParent>(parent, context), context, reason)
{}

DummyElt::DummyElt(const std::string& name, std::unique_ptr<DummyParent> parent, const ReadContext& context,
                   const char* reason)
    : PlainElt(name, *parent, context), m_dummyParent(std::move(parent))
{
    log(LOG_LEVEL_DEBUG, "Ignore element '%s' (line %d) where its parent is '%s' (line %d) %s: %s", getName(),
        getLine(), m_dummyParent->getName(), m_dummyParent->getLine(), getFileName(), reason);
}

DummyElt::~DummyElt() = default;

void DummyElt::setRawData(std::string_view text, int32_t) { m_rawData.emplace_back(text); }

} // namespace Color::Xml::Reader
