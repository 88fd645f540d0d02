#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace Color::Xml::Reader {

class Element;

/// The elements that are open, which it owns; the top is the innermost.
class ElementStack
{
public:
    /// Elements may be nested this deeply, which bounds what works its way down a tree of them.
    static constexpr std::size_t kMaxDepth = 256;

    ElementStack();
    ElementStack(const ElementStack&) = delete;
    ElementStack& operator=(const ElementStack&) = delete;
    ~ElementStack();

    bool isEmpty() const { return m_elements.empty(); }
    std::size_t getSize() const { return m_elements.size(); }
    /// Null when the stack is empty.
    Element* getTop() const;
    /// Throws 0x3020001 when elements are nested too deeply.
    Element& push(std::unique_ptr<Element> element);
    /// The stack must not be empty.
    std::unique_ptr<Element> pop();
    void clear();

    /// "XML stack is ", and for each element from the top "[name=identifier at line=N] ".
    std::string getTrace() const;

private:
    std::vector<std::unique_ptr<Element>> m_elements;
};

} // namespace Color::Xml::Reader
