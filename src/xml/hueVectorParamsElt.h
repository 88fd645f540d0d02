#pragma once

#include "xml/hueVectorElt.h"
#include "xml/paramsElt.h"

namespace Color::Xml::Reader {

/// HueVecParams: center, width and amount, with a style of their own.
class HueVectorParamsElt : public ParamsElt
{
public:
    HueVectorParamsElt(const std::string& name, HueVectorElt& parent, const ReadContext& context)
        : ParamsElt(name, parent, context), m_hueVector(parent)
    {}

    void start(Attributes attributes) override;

private:
    HueVectorElt& m_hueVector;
};

} // namespace Color::Xml::Reader
