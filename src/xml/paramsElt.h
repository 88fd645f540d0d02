#pragma once

#include "xml/element.h"

#include <initializer_list>
#include <optional>
#include <vector>

namespace Color::Xml::Reader {

/// A leaf without text whose attributes are the parameters of its op.
class ParamsElt : public PlainElt
{
public:
    void setRawData(std::string_view, int32_t) override {}

protected:
    using PlainElt::PlainElt;

    struct Param
    {
        const char* name;
        std::optional<double> value{};
    };

    /// Reads the parameters that are present. Throws 0x3020008 when one is no number.
    static void readParams(Attributes attributes, std::vector<Param>& params);
    /// The values of all parameters. Throws 0x3020014 for the first one that is missing.
    std::vector<double> requireParams(const std::vector<Param>& params, const std::string& styleName) const;

    /// The attribute `channel`: the index of a name in the list, or nothing without the attribute. Throws 0x3020013 on
    /// another text.
    std::optional<std::size_t> parseChannel(Attributes attributes, std::initializer_list<const char*> names) const;
};

} // namespace Color::Xml::Reader
