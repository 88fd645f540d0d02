#include "xml/elementStack.h"

#include "utils/exception.h"
#include "xml/element.h"

#include <utility>

namespace Color::Xml::Reader {

ElementStack::ElementStack() = default;

ElementStack::~ElementStack() { clear(); }

Element* ElementStack::getTop() const { return isEmpty() ? nullptr : m_elements.back().get(); }

Element& ElementStack::push(std::unique_ptr<Element> element)
{
    if (m_elements.size() >= kMaxDepth) {
        raise(LogCategory::XML_READER, ErrorIds::XML_PARSING, "Elements nested too deeply", element->getCurrentLine(),
              element->getFileName());
    }
    m_elements.push_back(std::move(element));
    return *m_elements.back();
}

std::unique_ptr<Element> ElementStack::pop()
{
    std::unique_ptr<Element> element = std::move(m_elements.back());
    m_elements.pop_back();
    return element;
}

void ElementStack::clear()
{
    // An element refers to those below it.
    while (!isEmpty())
        m_elements.pop_back();
}

std::string ElementStack::getTrace() const
{
    std::string trace = "XML stack is ";
    for (auto element = m_elements.rbegin(); element != m_elements.rend(); ++element) {
        trace += "[" + (*element)->getName();
        const std::string identifier = (*element)->getIdentifier();
        if (!identifier.empty()) trace += "=" + identifier;
        trace += " at line=" + std::to_string((*element)->getLine()) + "] ";
    }
    return trace;
}

} // namespace Color::Xml::Reader
