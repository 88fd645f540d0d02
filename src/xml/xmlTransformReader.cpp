#include "xml/xmlTransformReader.h"

#include "utils/exception.h"
#include "utils/numberText.h"
#include "utils/text.h"
#include "xml/childElementTable.h"
#include "xml/dummyElt.h"
#include "xml/elementReader.h"
#include "xml/fileExtension.h"
#include "xml/metadataElt.h"
#include "xml/opElementTable.h"
#include "xml/transformElt.h"

#include <optional>
#include <utility>

namespace Color {

using namespace Xml::Reader;

class XMLTransformReader::Impl : public ElementReader
{
public:
    void reset() override
    {
        m_transform.reset();
        ElementReader::reset();
    }

    const ColorTransformPtr& getTransform() const { return m_transform; }

protected:
    void pushElement(const std::string& name) override;
    void takeContainerText(Element& container, std::string_view text) override;

private:
    void pushProcessList(const std::string& name);
    void pushOp(OpType type, const std::string& name);

    ColorTransformPtr m_transform; ///< null until ProcessList starts
};

void XMLTransformReader::Impl::pushElement(const std::string& name)
{
    Element* top = getTop();
    if (auto* metadata = dynamic_cast<MetadataElt*>(top)) {
        push(std::make_unique<MetadataElt>(name, *metadata, getContext()));
    } else if (equalsIgnoreCase(name, "ProcessList")) {
        pushProcessList(name);
    } else if (const std::optional<OpType> type = findOpElement(name)) {
        pushOp(*type, name);
    } else if (auto* container = dynamic_cast<ContainerElt*>(top)) {
        push(makeChildElement(name, *container, getContext()));
    } else {
        pushDummy(name, "");
    }
}

void XMLTransformReader::Impl::pushProcessList(const std::string& name)
{
    if (m_transform) {
        pushDummy(name, ": The Color::Transform already exists");
        return;
    }
    auto element = std::make_unique<TransformElt>(name, getContext());
    m_transform = element->getTransform();
    push(std::move(element));
}

void XMLTransformReader::Impl::pushOp(OpType type, const std::string& name)
{
    const ReadContext& context = getContext();
    if (context.stack.getSize() != 1) {
        pushDummy(name, (": The " + name + "'s parent can only be a Transform").c_str());
        return;
    }
    auto* parent = dynamic_cast<TransformElt*>(getTop());
    if (!parent) {
        raise(LogCategory::XML_READER, ErrorIds::XML_TAG_MISSING, "ProcessList", context.line,
              context.getShownFileName());
    }
    auto element = makeOpElement(type, parent->getVersion(), name, *parent, context);
    if (!element) {
        raise(LogCategory::XML_READER, ErrorIds::XML_UNSUPPORTED_VERSION_FOR_OP,
              toSixDigits(static_cast<double>(parent->getVersion())), name, context.line, context.getShownFileName());
    }
    push(std::move(element));
}

void XMLTransformReader::Impl::takeContainerText(Element& container, std::string_view text)
{
    if (auto* metadata = dynamic_cast<MetadataElt*>(&container)) {
        metadata->appendValue(text);
    } else {
        ElementReader::takeContainerText(container, text);
    }
}

XMLTransformReader::XMLTransformReader() : m_impl(std::make_unique<Impl>()) {}

XMLTransformReader::~XMLTransformReader() = default;

const char* XMLTransformReader::getName() const { return "Morvane Transform Reader"; }

const char* XMLTransformReader::getExtension() { return "ctf"; }

void XMLTransformReader::readBuffer(const char* text)
{
    m_impl->attempt([&] {
        m_impl->readBuffer(text);
        if (!getTransform()) raise(LogCategory::XML_ALL, ErrorIds::XML_TRANSFORM_INVALID);
    });
}

void XMLTransformReader::readStream(std::istream& stream, const std::string& fileName)
{
    m_impl->attempt([&] {
        m_impl->readStream(stream, fileName);
        checkFile(fileName);
    });
}

void XMLTransformReader::readFile(const std::string& fileName)
{
    m_impl->attempt([&] {
        m_impl->readFile(fileName);
        checkFile(fileName);
    });
}

void XMLTransformReader::checkFile(const std::string& fileName) const
{
    const ColorTransformPtr transform = getTransform();
    if (!transform) raise(LogCategory::XML_ALL, ErrorIds::XML_TRANSFORM_INVALID_NAMED, fileName);
    if (transform->getOpList().empty()) raise(LogCategory::XML_READER, ErrorIds::XML_NO_OPS_IN_FILE, fileName);
}

ColorTransformPtr XMLTransformReader::getTransform() const { return m_impl->getTransform(); }

bool XMLTransformReader::isFileSupported(const std::string& fileName) const
{
    const std::string extension = getFileExtension(fileName);
    return extension == getExtension() || extension == "xml";
}

} // namespace Color
