#include "xml/paramsWriter.h"

#include "utils/numberText.h"

namespace Color::Xml::Writer {

void writeParams(XmlFormatter& formatter, const char* tagName, const std::vector<const char*>& paramNames,
                 const std::vector<ChannelParams>& channels)
{
    constexpr const char* channelNames[] = {"R", "G", "B", "A"};
    for (std::size_t channel = 0; channel < channels.size(); ++channel) {
        XmlFormatter::Attributes attributes;
        if (channels.size() > 1) attributes.emplace_back("channel", channelNames[channel]);
        for (std::size_t i = 0; i < paramNames.size(); ++i)
            attributes.emplace_back(paramNames[i], toSixDigits(channels[channel].at(i)));
        formatter.writeEmptyTag(tagName, attributes);
    }
}

} // namespace Color::Xml::Writer
