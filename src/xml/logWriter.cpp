#include "xml/logWriter.h"

#include "xml/paramsWriter.h"

namespace Color::Xml::Writer {

void LogWriter::writeContent() const
{
    const LogOp& log = getOp();
    if (!LogOp::hasParams(log.getStyle())) return;
    std::vector<ChannelParams> channels = {log.getParams(0), log.getParams(1), log.getParams(2)};
    if (channels[0] == channels[1] && channels[0] == channels[2]) channels.resize(1);
    writeParams(getFormatter(), "LogParams", {"gamma", "refWhite", "refBlack", "highlight", "shadow"}, channels);
}

} // namespace Color::Xml::Writer
