#pragma once

#include "xml/expatParser.h"
#include "xml/readContext.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Color::Xml::Reader {

/// An open element of the document that is being read. It belongs to the stack of its read, and its parent, which lies
/// below it there, outlives it.
class Element
{
public:
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;
    virtual ~Element();

    /// Called once, right after the element is pushed.
    virtual void start(Attributes attributes) = 0;
    /// Called when the element is closed: for a container before it is popped, for a leaf after.
    virtual void end() = 0;
    virtual bool isContainer() const = 0;
    /// What a stack trace prints after "=".
    virtual std::string getIdentifier() const = 0;
    virtual bool isDummy() const;
    /// What messages call this element.
    virtual std::string getTypeName() const = 0;

    const std::string& getName() const { return m_name; }
    /// The line of the start tag.
    int32_t getLine() const { return m_line; }
    /// The line just fed, which is the one that failures name.
    int32_t getCurrentLine() const { return m_context.line; }
    /// As messages show it.
    std::string getFileName() const { return m_context.getShownFileName(); }
    std::string getStackTrace() const { return m_context.stack.getTrace(); }

protected:
    Element(const std::string& name, const ReadContext& context) : Element(name, context, context.line) {}
    Element(const std::string& name, const ReadContext& context, int32_t line)
        : m_name(name), m_line(line), m_context(context)
    {}

private:
    std::string m_name;
    int32_t m_line;
    const ReadContext& m_context;
};

/// An element that holds elements.
class ContainerElt : public Element
{
public:
    bool isContainer() const final { return true; }
    virtual void appendDescription(const std::string& text) = 0;
    /// The version of the file, 1.6 where nothing tells.
    virtual float getVersion() const;

protected:
    using Element::Element;
};

/// A container with a name of its own and no op. Messages call it what they call its parent.
class ComplexElt : public ContainerElt
{
public:
    std::string getIdentifier() const override { return getName(); }
    std::string getTypeName() const override { return m_parent ? m_parent->getTypeName() : getName(); }
    void appendDescription(const std::string&) override {}

protected:
    ComplexElt(const std::string& name, ContainerElt& parent, const ReadContext& context)
        : ComplexElt(name, &parent, context)
    {}
    /// The parent of a root is null.
    ComplexElt(const std::string& name, ContainerElt* parent, const ReadContext& context)
        : ContainerElt(name, context), m_parent(parent)
    {}

private:
    ContainerElt* m_parent;
};

/// An element that holds text. start() and end() do nothing by themselves.
class PlainElt : public Element
{
public:
    void start(Attributes attributes) override;
    void end() override;
    bool isContainer() const final { return false; }
    std::string getIdentifier() const override { return {}; }
    std::string getTypeName() const override { return m_parent.getTypeName(); }
    /// Takes a chunk of text, trimmed and not empty, at most one for each line of the document.
    virtual void setRawData(std::string_view text, int32_t line) = 0;

    ContainerElt& getParent() const { return m_parent; }

protected:
    PlainElt(const std::string& name, ContainerElt& parent, const ReadContext& context)
        : Element(name, context), m_parent(parent)
    {}

private:
    ContainerElt& m_parent;
};

} // namespace Color::Xml::Reader
