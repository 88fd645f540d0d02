#include "xml/gammaElt.h"

#include "xml/gammaParamsElt.h"

namespace Color::Xml::Reader {

namespace {
constexpr std::size_t kAlpha = 3;
} // namespace

GammaElt::GammaElt(const std::string& name, TransformElt& parent, const ReadContext& context)
    : StyledOpElt(name, parent, context, BIT_DEPTH_32f, BIT_DEPTH_32f)
{}

void GammaElt::start(Attributes attributes)
{
    StyledOpElt::start(attributes);
    // A channel that the file says nothing of stays as it is.
    GammaOp& op = getTypedOp();
    for (std::size_t channel = 0; channel <= kAlpha; ++channel) {
        op.setParams(channel, GammaOp::getIdentityParams(op.getStyle()));
    }
}

void GammaElt::end()
{
    completeAlpha();
    StyledOpElt::end();
}

void GammaElt::completeAlpha() { getTypedOp().setParams(kAlpha, GammaOp::getIdentityParams(getTypedOp().getStyle())); }

std::unique_ptr<GammaParamsElt> GammaElt::createGammaParamsElt(const std::string& name, const ReadContext& context)
{
    return std::make_unique<GammaParamsElt>(name, *this, context);
}

void GammaElt_1_5::completeAlpha() {}

std::unique_ptr<GammaParamsElt> GammaElt_1_5::createGammaParamsElt(const std::string& name, const ReadContext& context)
{
    return std::make_unique<GammaParamsElt_1_5>(name, *this, context);
}

} // namespace Color::Xml::Reader
