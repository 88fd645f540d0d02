#pragma once

#include "xml/xmlFormatter.h"

namespace Color::Xml::Writer {

/// Something that is written as an element.
class ElementWriter
{
public:
    ElementWriter(const ElementWriter&) = delete;
    ElementWriter& operator=(const ElementWriter&) = delete;
    virtual ~ElementWriter() = default;

    virtual void write() const = 0;

protected:
    explicit ElementWriter(XmlFormatter& formatter) : m_formatter(formatter) {}

    XmlFormatter& getFormatter() const { return m_formatter; }

private:
    XmlFormatter& m_formatter;
};

} // namespace Color::Xml::Writer
