#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "xml/xmlTransformReader.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

using namespace Color;

namespace {

/// The first block of XML in the documentation of the format.
std::string documentedExample()
{
    std::ifstream file(MORVANE_TEST_DATA "/../../docs/ctf.md");
    std::stringstream text;
    text << file.rdbuf();
    const std::string open = "```xml\n";
    const std::size_t begin = text.str().find(open);
    if (begin == std::string::npos) return {};
    const std::size_t end = text.str().find("```", begin + open.size());
    return text.str().substr(begin + open.size(), end - begin - open.size());
}

} // namespace

TEST(Documentation, itsExampleLoadsAsItSays)
{
    std::istringstream example(documentedExample());
    XMLTransformReader reader;
    reader.readStream(example, "docs/ctf.md");
    const ColorTransformPtr transform = reader.getTransform();
    ASSERT_TRUE(transform);
    EXPECT_EQ(transform->getName(), "Warm print");
    EXPECT_EQ(transform->getDescriptions(), Descriptions{"Cross-talk and exposure of the print, then video levels."});
    EXPECT_EQ(transform->getInputDescriptor(), "scene-linear, ITU-R BT.709 primaries");
    EXPECT_EQ(transform->getMetadata().getChild("Shot").getChildValue("Take"), "3");

    ASSERT_EQ(transform->getOpList().size(), 2u);
    const auto& matrix = dynamic_cast<const MatrixOp&>(*transform->getOpList().get(0));
    EXPECT_EQ(matrix.getName(), "cross-talk");
    EXPECT_EQ(matrix.getArray().getValues()[1], 0.03f);
    EXPECT_EQ(matrix.getOffsets(), (MatrixOp::Offsets{0.001f, 0.001f, 0.001f, 0.f}));
    const auto& range = dynamic_cast<const RangeOp&>(*transform->getOpList().get(1));
    EXPECT_EQ(range.getOutBitDepth(), BIT_DEPTH_10i);
    EXPECT_EQ(range.getScale(), 876.0);
    EXPECT_EQ(range.getOffset(), 64.0);
}
