#include "xml/cdlReader.h"

#include "utils/exception.h"
#include "utils/text.h"
#include "xml/cdlElementTable.h"
#include "xml/elementReader.h"
#include "xml/fileExtension.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <fstream>

namespace Color {

namespace {

using namespace Xml::Reader;

/// How much of a file is searched for its root.
constexpr std::size_t kHeadSize = 5120;

/// Reads the lines that a file begins with, until they are enough, and goes back to its start.
std::string readHead(std::istream& stream, const std::string& fileName)
{
    std::string head;
    std::string line;
    while (head.size() < kHeadSize && std::getline(stream, line))
        head.append(line).append(" ");
    if (!stream.bad()) {
        stream.clear(); // of its end
        stream.seekg(0);
    }
    if (!stream) raise(LogCategory::XML_READER, ErrorIds::XML_FILE_OPEN_FAILED, fileName);
    return head;
}

} // namespace

class CDLReader::Impl : public ElementReader
{
public:
    void reset() override
    {
        m_document.hasRoot = false;
        m_document.transforms.clear();
        m_document.inheritedSize = 0;
        ElementReader::reset();
    }

    /// Tells the format of the document that is read next. Throws 0x3020002 when its head names no root.
    void chooseFormat(std::string_view head, const std::string& shownFileName)
    {
        const std::optional<CDLFormat> format = findCDLFormat(head);
        if (!format) {
            raise(LogCategory::XML_READER, ErrorIds::XML_TAG_MISSING, kCDLFormats[0].root, getContext().line,
                  shownFileName);
        }
        m_document.format = *format;
    }

    void checkHasTransforms() const
    {
        if (!m_document.transforms.empty()) return;
        raise(LogCategory::XML_READER, ErrorIds::XML_NO_OPS_IN_FILE, getContext().getShownFileName());
    }

    const Transforms& getTransforms() const { return m_document.transforms; }

protected:
    void pushElement(const std::string& name) override
    {
        push(makeCDLElement(name, getTop(), m_document, getContext()));
    }

private:
    CDLDocument m_document;
};

CDLReader::CDLReader() : m_impl(std::make_unique<Impl>()) {}

CDLReader::~CDLReader() = default;

const char* CDLReader::getName() const { return "CDL Reader"; }

template <class Body>
void CDLReader::read(Body&& body)
{
    m_impl->attempt([&] {
        m_impl->reset();
        body();
        m_impl->checkHasTransforms();
    });
}

void CDLReader::readBuffer(const char* text)
{
    read([&] {
        m_impl->chooseFormat(orEmpty(text), m_impl->getContext().getShownFileName());
        m_impl->readBuffer(text);
    });
}

void CDLReader::readStream(std::istream& stream, const std::string& fileName)
{
    read([&] {
        m_impl->chooseFormat(readHead(stream, fileName), fileName);
        m_impl->readStream(stream, fileName);
    });
}

void CDLReader::readFile(const std::string& fileName)
{
    std::ifstream stream(fileName);
    readStream(stream, fileName);
}

ColorTransformPtr CDLReader::getTransform() const
{
    static const ColorTransformPtr empty = boost::make_shared<Transform>();
    return getTransformList().empty() ? empty : getTransformList().front();
}

const CDLReader::Transforms& CDLReader::getTransformList() const { return m_impl->getTransforms(); }

bool CDLReader::isFileSupported(const std::string& fileName) const
{
    const std::string extension = getFileExtension(fileName);
    return std::any_of(kCDLFormats.begin(), kCDLFormats.end(),
                       [&](const CDLFormatRow& row) { return equalsIgnoreCase(extension, row.extension); });
}

} // namespace Color
