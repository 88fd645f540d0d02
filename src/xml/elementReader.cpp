#include "xml/elementReader.h"

#include "utils/exception.h"
#include "utils/text.h"
#include "xml/dummyElt.h"

#include <algorithm>
#include <fstream>

namespace Color::Xml::Reader {

ElementReader::ElementReader() = default;

ElementReader::~ElementReader() = default;

void ElementReader::reset()
{
    m_context.stack.clear();
    m_context.line = 0;
    m_context.fileName.clear();
    m_text.clear();
    m_lateEnds.clear();
    m_parser.emplace(static_cast<DocumentHandler&>(*this));
}

void ElementReader::readBuffer(const char* text)
{
    reset();
    feed(orEmpty(text));
    flushText();
    checkClosed();
}

void ElementReader::readStream(std::istream& stream, const std::string& fileName)
{
    reset();
    m_context.fileName = fileName;
    std::string line;
    try {
        // The stream would otherwise keep to itself that there is no memory for a line.
        stream.exceptions(std::ios::badbit);
        while (std::getline(stream, line)) {
            ++m_context.line;
            feedLine(line);
        }
    } catch (const std::ios::failure&) {
        raise(LogCategory::XML_READER, ErrorIds::XML_FILE_OPEN_FAILED, fileName);
    }
    flushText();
    checkClosed();
}

void ElementReader::readFile(const std::string& fileName)
{
    std::ifstream stream(fileName);
    if (!stream) {
        reset();
        raise(LogCategory::XML_READER, ErrorIds::XML_FILE_OPEN_FAILED, fileName);
    }
    readStream(stream, fileName);
}

void ElementReader::failForMemory() { raise(LogCategory::XML_ALL, ErrorIds::XML_MEMORY_ALLOCATION); }

void ElementReader::feed(std::string_view text)
{
    const ExpatParser::Result result = m_parser->feed(text);
    if (result == ExpatParser::Result::Good) return;

    flushText(); // what stands before the fault may be at fault itself
    if (result == ExpatParser::Result::Illegal) {
        raise(LogCategory::XML_READER, ErrorIds::XML_PARSING, m_parser->getErrorText(), m_context.line,
              m_context.getShownFileName());
    }
    checkClosed();
    raise(LogCategory::XML_READER, ErrorIds::XML_UNBALANCED_TAGS, m_context.line, m_context.getShownFileName());
}

void ElementReader::feedLine(std::string_view line)
{
    feed(line);
    if (const std::size_t brackets = countLateBrackets(line)) {
        if (m_lateEnds.empty() || m_lateEnds.back() != brackets) m_lateEnds.push_back(brackets);
    } else {
        flushText();
    }
}

std::size_t ElementReader::countLateBrackets(std::string_view line) const
{
    const uint64_t pending = m_parser->getPendingSize();
    if (pending < 1 || pending > 2) return 0;
    const std::size_t own = std::min(static_cast<std::size_t>(pending), line.size());
    const bool ownAreBrackets = line.substr(line.size() - own).find_first_not_of(']') == std::string_view::npos;
    const bool othersAreBrackets = own == pending || !m_lateEnds.empty();
    return ownAreBrackets && othersAreBrackets ? static_cast<std::size_t>(pending) : 0;
}

void ElementReader::checkClosed() const
{
    if (!getTop()) return;
    raise(LogCategory::XML_READER, ErrorIds::XML_NO_CLOSING_TAG, getTop()->getName(), m_context.line,
          m_context.getShownFileName());
}

void ElementReader::checkName(const char* name) const
{
    if (name && *name) return;
    raise(LogCategory::XML_READER, ErrorIds::XML_PARSING, "Internal error", m_context.line,
          m_context.getShownFileName());
}

void ElementReader::startElement(const char* name, Attributes attributes)
{
    flushText();
    checkName(name);
    pushElement(name);
    getTop()->start(attributes);
}

void ElementReader::pushDummy(const std::string& name, const char* reason)
{
    push(std::make_unique<DummyElt>(name, getTop(), m_context, reason));
}

void ElementReader::endElement(const char* name)
{
    flushText();
    checkName(name);
    Element* top = getTop();
    if (!top || top->getName() != name) {
        raise(LogCategory::XML_READER, ErrorIds::XML_TAG_MISSING, top ? name : "", m_context.line,
              m_context.getShownFileName());
    }
    if (top->isContainer() || top->isDummy()) {
        top->end();
        m_context.stack.pop();
        return;
    }
    const auto* plain = dynamic_cast<const PlainElt*>(top);
    if (!plain) {
        raise(LogCategory::XML_READER, ErrorIds::XML_ATTRIBUTE_END_ILLEGAL, name, m_context.line,
              m_context.getShownFileName());
    }
    const std::unique_ptr<Element> ended = m_context.stack.pop();
    if (getTop() != &plain->getParent()) {
        raise(LogCategory::XML_READER, ErrorIds::XML_PARSING, name, m_context.line, m_context.getShownFileName());
    }
    ended->end();
}

void ElementReader::characterData(const char* text, int length)
{
    if (length == 0) return;
    if (length < 0 || !text || !*text) {
        raise(LogCategory::XML_READER, ErrorIds::XML_ATTRIBUTE_ILLEGAL, orEmpty(text));
    }
    std::string_view piece(text, static_cast<std::size_t>(length));
    takeLateBrackets(piece);
    if (piece == "\n") {
        flushText();
    } else {
        m_text += piece;
    }
}

void ElementReader::takeLateBrackets(std::string_view& piece)
{
    while (!m_lateEnds.empty() && !piece.empty()) {
        if (piece.front() != ']') return flushText();
        piece.remove_prefix(1);
        m_text += ']';
        for (std::size_t& end : m_lateEnds)
            --end;
        while (!m_lateEnds.empty() && m_lateEnds.front() == 0) {
            m_lateEnds.erase(m_lateEnds.begin());
            handOverText();
        }
    }
}

void ElementReader::flushText()
{
    m_lateEnds.clear();
    handOverText();
}

void ElementReader::handOverText()
{
    takeText(trimmed(m_text));
    m_text.clear();
}

void ElementReader::takeText(std::string_view text)
{
    if (text.empty()) return;
    Element* top = getTop();
    if (!top) {
        raise(LogCategory::XML_READER, ErrorIds::XML_NO_CLOSING_TAG, text, m_context.line,
              m_context.getShownFileName());
    }
    if (auto* plain = dynamic_cast<PlainElt*>(top)) {
        plain->setRawData(text, m_context.line);
    } else {
        takeContainerText(*top, text);
    }
}

void ElementReader::takeContainerText(Element&, std::string_view text)
{
    raise(LogCategory::XML_READER, ErrorIds::XML_ATTRIBUTE_END_ILLEGAL, text, m_context.line,
          m_context.getShownFileName());
}

} // namespace Color::Xml::Reader
