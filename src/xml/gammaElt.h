#pragma once

#include "transform/gammaOp.h"
#include "xml/styledOpElt.h"

namespace Color::Xml::Reader {

class GammaParamsElt;

/// Gamma as files up to version 1.4 have it: alpha has no parameters of its own.
class GammaElt : public StyledOpElt<GammaOp>
{
public:
    GammaElt(const std::string& name, TransformElt& parent, const ReadContext& context);

    void start(Attributes attributes) override;
    void end() override;

    virtual std::unique_ptr<GammaParamsElt> createGammaParamsElt(const std::string& name, const ReadContext& context);

protected:
    /// At the end of the element: alpha becomes the identity.
    virtual void completeAlpha();
};

/// Gamma from version 1.5 on, with parameters for alpha.
class GammaElt_1_5 : public GammaElt
{
public:
    using GammaElt::GammaElt;

    std::unique_ptr<GammaParamsElt> createGammaParamsElt(const std::string& name, const ReadContext& context) override;

protected:
    /// Alpha stays as read.
    void completeAlpha() override;
};

} // namespace Color::Xml::Reader
