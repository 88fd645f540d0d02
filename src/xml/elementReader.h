#pragma once

#include "xml/element.h"
#include "xml/expatParser.h"
#include "xml/readContext.h"

#include <istream>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

namespace Color::Xml::Reader {

/// The part that all readers of XML files share: it feeds a document to expat and keeps the stack of open elements. A
/// derived class tells which element each start tag makes.
class ElementReader : public DocumentHandler
{
public:
    ElementReader();
    ~ElementReader() override;

    /// Forgets all that was read. A derived class forgets its result too, and calls this one.
    virtual void reset();

    /// Runs a read with all that belongs to it. Whatever fails, nothing of it is left. Throws 0x3010003 when memory
    /// runs out.
    template <class Read>
    void attempt(Read&& read)
    {
        try {
            read();
        } catch (const std::bad_alloc&) {
            reset();
            failForMemory();
        } catch (...) {
            reset();
            throw;
        }
    }

    /// Reads a whole text. Throws, as the two others do, on any failure.
    void readBuffer(const char* text);
    /// Reads line by line a text that is already open; the name is for messages.
    void readStream(std::istream& stream, const std::string& fileName);
    /// Throws 0x3020018 when the file cannot be opened.
    void readFile(const std::string& fileName);

    // What the parser calls. Text is gathered: a line's worth of it reaches the element as one chunk.
    void startElement(const char* name, Attributes attributes) final;
    void endElement(const char* name) final;
    void characterData(const char* text, int length) final;

    const ReadContext& getContext() const { return m_context; }

protected:
    /// Pushes the element that a start tag stands for.
    virtual void pushElement(const std::string& name) = 0;
    /// Takes a chunk of trimmed text for a container, or throws 0x3020005.
    virtual void takeContainerText(Element& container, std::string_view text);

    Element* getTop() const { return m_context.stack.getTop(); }
    void push(std::unique_ptr<Element> element) { m_context.stack.push(std::move(element)); }
    void pushDummy(const std::string& name, const char* reason);

private:
    [[noreturn]] static void failForMemory();
    void checkName(const char* name) const;
    void feed(std::string_view text);
    void feedLine(std::string_view line);
    /// How many brackets at the end of the line expat holds back: it must see what follows to know that no "]]>" begins
    /// there. They still are this line's text.
    std::size_t countLateBrackets(std::string_view line) const;
    /// Takes off the front of a piece the brackets that belong to former lines, and ends those lines.
    void takeLateBrackets(std::string_view& piece);
    /// Ends all lines so far.
    void flushText();
    void handOverText();
    void takeText(std::string_view text);
    /// Throws 0x3020004 when an element is still open.
    void checkClosed() const;

    ReadContext m_context;
    std::optional<ExpatParser> m_parser;
    std::string m_text;                  ///< gathered, not yet handed to an element
    std::vector<std::size_t> m_lateEnds; ///< how many characters expat holds back before the end of each former line
};

} // namespace Color::Xml::Reader
