#include "xml/expatParser.h"

#include <algorithm>
#include <array>
#include <expat.h>
#include <new>
#include <utility>

namespace Color::Xml::Reader {

namespace {

/// expat takes the length of a piece as an int.
constexpr std::size_t kLargestPiece = std::size_t{64} << 20;

/// expat scans unfinished markup again from its start with every piece that is added. From this size on only pieces
/// that can finish it are handed on.
constexpr uint64_t kLongMarkup = uint64_t{64} << 10;

/// How much of long markup may be scanned again before the document is refused.
constexpr uint64_t kRescanLimit = uint64_t{1} << 30;

/// The characters of an element's text that are neither markup nor control characters nor beyond ASCII.
constexpr std::array<bool, 256> kPlainCharacters = [] {
    std::array<bool, 256> isPlain{};
    for (std::size_t c = ' '; c <= '~'; ++c)
        isPlain[c] = c != '<' && c != '&' && c != ']';
    isPlain['\t'] = true;
    return isPlain;
}();

/// Whether expat would hand the text of an element on as it is.
bool isPlainText(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return kPlainCharacters[static_cast<unsigned char>(c)]; });
}

} // namespace

DocumentHandler::~DocumentHandler() = default;

ExpatParser::ExpatParser(DocumentHandler& handler) : m_handler(handler), m_parser(XML_ParserCreate(nullptr))
{
    if (!m_parser) throw std::bad_alloc();
#if MORVANE_EXPAT_HAS_REPARSE_DEFERRAL
    // An element must be told of with the line that completes it.
    XML_SetReparseDeferralEnabled(m_parser, XML_FALSE);
#endif
    XML_SetUserData(m_parser, this);
    XML_SetElementHandler(
        m_parser,
        [](void* self, const XML_Char* name, const XML_Char** attributes) {
            auto& parser = *static_cast<ExpatParser*>(self);
            ++parser.m_depth;
            parser.guard([&] { parser.m_handler.startElement(name, attributes); });
        },
        [](void* self, const XML_Char* name) {
            auto& parser = *static_cast<ExpatParser*>(self);
            --parser.m_depth;
            parser.guard([&] { parser.m_handler.endElement(name); });
        });
    XML_SetCharacterDataHandler(m_parser, [](void* self, const XML_Char* text, int length) {
        auto& parser = *static_cast<ExpatParser*>(self);
        parser.guard([&] { parser.m_handler.characterData(text, length); });
    });
    XML_SetStartDoctypeDeclHandler(m_parser, [](void* self, const XML_Char*, const XML_Char*, const XML_Char*, int) {
        static_cast<ExpatParser*>(self)->m_hasDoctype = true;
    });
}

ExpatParser::~ExpatParser() { XML_ParserFree(m_parser); }

template <class Call>
void ExpatParser::guard(Call&& call) noexcept
{
    // expat may still call after it was stopped, for the end of an empty element.
    if (m_failure) return;
    try {
        call();
    } catch (...) {
        m_failure = std::current_exception();
        XML_StopParser(m_parser, XML_FALSE);
    }
}

ExpatParser::Result ExpatParser::feed(std::string_view text)
{
    // The many lines of numbers of a LUT need no markup parser.
    if (isInText() && !text.empty() && text.size() <= kLargestPiece && isPlainText(text)) {
        m_handler.characterData(text.data(), static_cast<int>(text.size()));
        return Result::Good;
    }
    // Markup ends with a '>', so no other piece can complete it.
    if (m_pending > kLongMarkup && text.find('>') == std::string_view::npos) {
        m_held += text;
        m_pending += text.size();
        return Result::Good;
    }
    if (m_held.empty()) return parse(text);
    const std::string held = std::exchange(m_held, {}).append(text);
    return parse(held);
}

ExpatParser::Result ExpatParser::parse(std::string_view text)
{
    m_hasNull = m_hasNull || text.find('\0') != std::string_view::npos;
    while (!text.empty()) {
        const std::string_view piece = text.substr(0, kLargestPiece);
        text.remove_prefix(piece.size());
        const XML_Status status = XML_Parse(m_parser, piece.data(), static_cast<int>(piece.size()), XML_FALSE);
        if (m_failure) std::rethrow_exception(m_failure);
        if (status != XML_STATUS_OK) {
            const XML_Error error = XML_GetErrorCode(m_parser);
            if (error == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
            m_errorText = XML_ErrorString(error);
            return error == XML_ERROR_TAG_MISMATCH ? Result::TagMismatch : Result::Illegal;
        }
        m_parsed += piece.size();
        updatePending();
        if (m_pending > kLongMarkup) m_rescanned += m_pending;
        if (m_rescanned > kRescanLimit) {
            m_errorText = "Markup spread over too many lines";
            return Result::Illegal;
        }
    }
    return Result::Good;
}

void ExpatParser::updatePending()
{
    // After a parse the current position is where the first unfinished token starts.
    const XML_Index index = XML_GetCurrentByteIndex(m_parser);
    const uint64_t used = index < 0 ? m_parsed : std::min(static_cast<uint64_t>(index), m_parsed);
    m_pending = m_parsed - used;
}

} // namespace Color::Xml::Reader
