#include "tests/xml/cdl.h"
#include "tests/xml/halvorn.h"
#include "transform/lut1DOp.h"
#include "transform/lut3DOp.h"
#include "xml/halvorn1DReader.h"
#include "xml/halvorn3DReader.h"

#include <fstream>
#include <vector>

using namespace Color;

namespace {

/// The blocks of this kind in the documentation of the formats.
std::vector<std::string> documentedExamples(const std::string& kind)
{
    std::ifstream file(MORVANE_TEST_DATA "/../../docs/formats.md");
    std::vector<std::string> examples;
    bool isInside = false;
    bool isWanted = false;
    for (std::string line; std::getline(file, line);) {
        if (line.substr(0, 3) == "```") {
            isInside = !isInside;
            isWanted = isInside && line == "```" + kind;
            if (isWanted) examples.emplace_back();
        } else if (isWanted) {
            examples.back() += line + "\n";
        }
    }
    return examples;
}

} // namespace

TEST(FormatsDocumentation, itsExamplesOfCDLLoad)
{
    const std::vector<std::string> examples = documentedExamples("xml");
    ASSERT_EQ(examples.size(), 3u);
    const CDLOp ofList = Cdl::readOp(examples[0]);
    EXPECT_EQ(ofList.getId(), "sc12");
    EXPECT_EQ(ofList.getStyle(), CDLOp::STYLE_V1_2_FWD);
    EXPECT_EQ(ofList.getPower(), (CDLOp::Params{1, 1.05, 1.1}));
    EXPECT_EQ(ofList.getSaturation(), 0.85);
    EXPECT_EQ(ofList.getDescriptions(), (Descriptions{"CD: Scene 12", "CDL: InputDesc: Log film scan", "SOP: Warmer"}));
    EXPECT_EQ(Cdl::readOp(examples[1], 0).getId(), "day");
    EXPECT_EQ(Cdl::readOp(examples[1], 1).getSaturation(), 0.6);
    EXPECT_EQ(Cdl::readOp(examples[2]).getSlope(), (CDLOp::Params{1.2, 1.2, 1.2}));
}

TEST(FormatsDocumentation, itsExampleOfA1DLUTLoadsWhenCompleted)
{
    std::string text = documentedExamples("").at(0);
    for (int i = 4; i < 256; ++i)
        text += std::to_string(4 * i) + "\n";
    Halvorn1DReader reader;
    Halvorn::read(reader, text, "test.lut");
    const auto& op = dynamic_cast<const Lut1DOp&>(*reader.getTransform()->getOpList().get(0));
    EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_10i);
    for (std::size_t i = 0; i < 256; ++i)
        EXPECT_EQ(op.getArray().getValues()[3 * i], static_cast<float>(4 * i));
}

TEST(FormatsDocumentation, itsExampleOfA3DLUTLoadsWhenCompleted)
{
    const std::string text = documentedExamples("").at(1) + Halvorn::times(Halvorn::kRows - 3, "0 0 1000\n");
    Halvorn3DReader reader;
    Halvorn::read(reader, text, "test.3dl");
    const auto& op = dynamic_cast<const Lut3DOp&>(*reader.getTransform()->getOpList().get(0));
    EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_10i);
    const auto& values = op.getArray().getValues();
    EXPECT_EQ(Array::Values(values.begin(), values.begin() + 10), (Array::Values{0, 0, 0, 0, 0, 64, 0, 0, 128, 0}));
}
