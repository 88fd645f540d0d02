#include "xml/gammaWriter.h"

#include "xml/paramsWriter.h"

namespace Color::Xml::Writer {

void GammaWriter::writeContent() const
{
    const GammaOp& gamma = getOp();
    const GammaOp::Params identity = GammaOp::getIdentityParams(gamma.getStyle());
    const bool hasOffset = identity.size() > 1;
    const bool isAlphaIdentity = gamma.getParams(3) == identity;

    std::vector<ChannelParams> channels = {gamma.getParams(0), gamma.getParams(1), gamma.getParams(2)};
    // One element for the three colours says nothing of alpha.
    if (!isAlphaIdentity) {
        channels.push_back(gamma.getParams(3));
    } else if (channels[0] == channels[1] && channels[0] == channels[2]) {
        channels.resize(1);
    }
    writeParams(getFormatter(), "GammaParams",
                hasOffset ? std::vector<const char*>{"gamma", "offset"} : std::vector<const char*>{"gamma"}, channels);
}

} // namespace Color::Xml::Writer
