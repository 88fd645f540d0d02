#pragma once

#include "xml/element.h"

#include <vector>

namespace Color::Xml::Reader {

/// A leaf whose text, over any number of lines, is a list of numbers.
class NumbersElt : public PlainElt
{
public:
    void setRawData(std::string_view text, int32_t line) override;

protected:
    using PlainElt::PlainElt;

    /// Throws 0x302000e when a token is no number.
    std::vector<double> parseNumbers() const;

private:
    std::string m_text;
};

} // namespace Color::Xml::Reader
