#pragma once

#include "tests/utils/failure.h"
#include "transform/CDLOp.h"
#include "xml/cdlReader.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

/// Small CDL documents and what comes of reading them.
namespace Cdl {

const std::string kSOPNode =
    "<SOPNode>\n<Slope>1 2 3</Slope>\n<Offset>4 5 6</Offset>\n<Power>7 8 9</Power>\n</SOPNode>\n";

/// Each of these starts its content on line 2.
inline std::string fragment(const std::string& content)
{
    return "<ColorCorrection id=\"c\">\n" + content + "</ColorCorrection>\n";
}
inline std::string collection(const std::string& content)
{
    return "<ColorCorrectionCollection>\n" + content + "</ColorCorrectionCollection>\n";
}
inline std::string list(const std::string& content)
{
    return "<ColorDecisionList>\n" + content + "</ColorDecisionList>\n";
}
inline std::string decision(const std::string& content) { return "<ColorDecision>" + content + "</ColorDecision>\n"; }

/// Reads a document as a file called "test.cdl".
inline void read(Color::CDLReader& reader, const std::string& text)
{
    std::istringstream stream(text);
    reader.readStream(stream, "test.cdl");
}

inline const Color::CDLOp& opOf(const Color::ColorTransformPtr& transform)
{
    return dynamic_cast<const Color::CDLOp&>(*transform->getOpList().get(0));
}

/// The op of the correction at this index of a document.
inline Color::CDLOp readOp(const std::string& text, std::size_t index = 0)
{
    Color::CDLReader reader;
    read(reader, text);
    return opOf(reader.getTransformList().at(index));
}

/// Expects that reading a document fails with exactly this message.
inline void expectReadFails(const std::string& text, Color::ErrorId id, const std::string& message,
                            const std::string& category = "COLOR:XML:READER")
{
    SCOPED_TRACE(text.substr(0, 400));
    Color::CDLReader reader;
    EXPECT_EQ(failureOf([&] { read(reader, text); }), (Failure{id, category, message}));
    EXPECT_TRUE(reader.getTransformList().empty());
    EXPECT_TRUE(reader.getTransform()->getOpList().empty());
}

} // namespace Cdl
