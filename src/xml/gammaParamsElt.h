#pragma once

#include "xml/gammaElt.h"
#include "xml/paramsElt.h"

namespace Color::Xml::Reader {

/// GammaParams: the parameters of one colour channel, or of all three.
class GammaParamsElt : public ParamsElt
{
public:
    GammaParamsElt(const std::string& name, GammaElt& parent, const ReadContext& context)
        : ParamsElt(name, parent, context), m_gamma(parent)
    {}

    void start(Attributes attributes) override;

protected:
    /// 0 red, 1 green, 2 blue, and where the version has it 3 alpha.
    virtual std::optional<std::size_t> parseGammaChannel(Attributes attributes) const;

private:
    GammaElt& m_gamma;
};

/// The same with alpha as a channel.
class GammaParamsElt_1_5 : public GammaParamsElt
{
public:
    using GammaParamsElt::GammaParamsElt;

protected:
    std::optional<std::size_t> parseGammaChannel(Attributes attributes) const override;
};

} // namespace Color::Xml::Reader
