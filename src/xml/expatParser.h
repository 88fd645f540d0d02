#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

struct XML_ParserStruct;

namespace Color::Xml::Reader {

/// Name and value pairs in turn, ended by a null.
using Attributes = const char* const*;

/// Is told what a document holds, in document order. All texts are UTF-8.
class DocumentHandler
{
public:
    virtual ~DocumentHandler();
    virtual void startElement(const char* name, Attributes attributes) = 0;
    virtual void endElement(const char* name) = 0;
    /// A run of text may come in several pieces. A newline is always a piece of its own.
    virtual void characterData(const char* text, int length) = 0;
};

/// Parses a document that is fed piece by piece. External entities are never read, and expat's limit on the growth of
/// internal ones holds.
class ExpatParser
{
public:
    /// What stopped the parse when it was not the handler.
    enum class Result
    {
        Good,
        TagMismatch,
        Illegal
    };

    /// The handler must outlive the parser.
    explicit ExpatParser(DocumentHandler& handler);
    ExpatParser(const ExpatParser&) = delete;
    ExpatParser& operator=(const ExpatParser&) = delete;
    ~ExpatParser();

    /// Parses the next piece. What a handler throws comes through; after that, or after another result than Good, the
    /// parser is spent.
    Result feed(std::string_view text);

    /// Why the result was not Good.
    const char* getErrorText() const { return m_errorText; }

    /// How many of the bytes fed are still waiting for what follows them.
    uint64_t getPendingSize() const { return m_pending; }

private:
    /// Runs a handler call. Exceptions cannot pass through expat: the first one is kept, and the parse stopped.
    template <class Call>
    void guard(Call&& call) noexcept;
    Result parse(std::string_view text);
    void updatePending();
    /// Whether text of an element comes next, in an encoding that has ASCII as it is.
    bool isInText() const { return m_depth > 0 && m_pending == 0 && !m_hasDoctype && !m_hasNull; }

    DocumentHandler& m_handler;
    XML_ParserStruct* m_parser;
    const char* m_errorText = "";
    std::exception_ptr m_failure;
    std::string m_held; ///< fed, but not worth handing on yet
    uint64_t m_parsed = 0;
    uint64_t m_pending = 0;
    uint64_t m_rescanned = 0;
    uint64_t m_depth = 0;      ///< of open elements
    bool m_hasDoctype = false; ///< and may thus have entities, whose growth expat compares with all that it was fed
    bool m_hasNull = false;    ///< as only documents in UTF-16 may
};

} // namespace Color::Xml::Reader
