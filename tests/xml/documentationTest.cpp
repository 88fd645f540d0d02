#include "tests/xml/written.h"
#include "transform/CDLOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/gammaOp.h"
#include "transform/hueVectorOp.h"
#include "transform/logOp.h"
#include "transform/lut1DOp.h"
#include "transform/lut3DOp.h"
#include "transform/matrixOp.h"
#include "transform/rangeOp.h"
#include "transform/referenceOp.h"
#include "xml/xmlTransformReader.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

using namespace Color;

namespace {

/// The blocks of XML in the documentation of the format.
std::vector<std::string> documentedExamples()
{
    std::ifstream file(MORVANE_TEST_DATA "/../../docs/ctf.md");
    std::stringstream stream;
    stream << file.rdbuf();
    const std::string text = stream.str();
    const std::string open = "```xml\n";
    std::vector<std::string> examples;
    for (std::size_t begin = text.find(open); begin != std::string::npos; begin = text.find(open, begin)) {
        begin += open.size();
        examples.push_back(text.substr(begin, text.find("```", begin) - begin));
    }
    return examples;
}

ColorTransformPtr read(const std::string& document)
{
    std::istringstream stream(document);
    XMLTransformReader reader;
    reader.readStream(stream, "docs/ctf.md");
    return reader.getTransform();
}

/// The documented example of one op.
ColorTransformPtr readExample(const std::string& example)
{
    return read("<ProcessList id=\"example\" version=\"1.6\">\n" + example + "</ProcessList>");
}

/// The op of the example that is about this element.
template <class OpClass>
boost::shared_ptr<const OpClass> exampleOf(const std::string& element)
{
    for (const std::string& example : documentedExamples()) {
        if (example.rfind("<" + element + " ", 0) != 0) continue;
        const ColorTransformPtr transform = readExample(example);
        return {transform, dynamic_cast<const OpClass*>(transform->getOpList().get(0))};
    }
    return nullptr;
}

} // namespace

TEST(Documentation, itsExampleLoadsAsItSays)
{
    const ColorTransformPtr transform = read(documentedExamples().at(0));
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

TEST(Documentation, itsExampleOfEachOpLoads)
{
    std::vector<OpType> types;
    const std::vector<std::string> examples = documentedExamples();
    for (std::size_t i = 1; i < examples.size(); ++i) {
        SCOPED_TRACE(examples[i]);
        const ColorTransformPtr transform = readExample(examples[i]);
        ASSERT_EQ(transform->getOpList().size(), 1u);
        types.push_back(transform->getOpList().get(0)->getOpType());
    }
    EXPECT_EQ(types,
              (std::vector<OpType>{OP_LUT_1D, OP_INVERSE_LUT_1D, OP_LUT_3D, OP_GAMMA, OP_LOG, OP_EXPOSURE_CONTRAST,
                                   OP_CDL, OP_GAMUT_MAP, OP_HUE_VECTOR, OP_DITHER, OP_REFERENCE}));
}

TEST(Documentation, itsExamplesSurviveASaveWhichIsTheSameTextEachTime)
{
    const std::vector<std::string> examples = documentedExamples();
    for (std::size_t i = 0; i < examples.size(); ++i) {
        SCOPED_TRACE(examples[i]);
        const ColorTransformPtr transform = i == 0 ? read(examples[i]) : readExample(examples[i]);
        const std::string text = Ctf::write(transform);
        const ColorTransformPtr readBack = read(text);
        EXPECT_TRUE(readBack->isEqual(*transform)) << text;
        EXPECT_EQ(Ctf::write(readBack), text);
    }
}

TEST(Documentation, aSaveKeepsAsManyDigitsAsItSays)
{
    const float third = 1.F / 3.F;
    const auto hasNumber = [](const Op& op, const std::string& number) {
        return Ctf::writeOp(op).find(number + "\n") != std::string::npos;
    };
    MatrixOp matrix(BIT_DEPTH_8i, BIT_DEPTH_8i);
    matrix.setOffset(2, third);
    EXPECT_TRUE(hasNumber(matrix, " 0.33333334"));

    const struct
    {
        BitDepth outBitDepth;
        const char* number;
    } rows[] = {
        {BIT_DEPTH_32f, " 0.33333334"}, {BIT_DEPTH_16f, " 0.33333"},  {BIT_DEPTH_16i, " 0.333333"},
        {BIT_DEPTH_12i, " 0.333333"},   {BIT_DEPTH_10i, " 0.333333"}, {BIT_DEPTH_8i, " 0.333333"},
    };
    for (const auto& row : rows) {
        Lut1DOp lut1D(BIT_DEPTH_32f, row.outBitDepth, {}, {}, {}, Lut1DOp::INTERPOLATION_DEFAULT, 2, HALF_FLAGS_NONE);
        lut1D.getArray().setValue(2, third);
        EXPECT_TRUE(hasNumber(lut1D, row.number)) << row.number;
        Lut3DOp lut3D(BIT_DEPTH_32f, row.outBitDepth, 2);
        lut3D.getArray().setValue(2, third);
        EXPECT_TRUE(hasNumber(lut3D, row.number)) << row.number;
    }

    ExposureContrastOp exposureContrast;
    exposureContrast.getExposure()->set(1.0 / 3.0);
    exposureContrast.setPivot(1.0 / 3.0);
    EXPECT_NE(Ctf::writeOp(exposureContrast).find("\"0.3333333333333333\" contrast=\"1\" pivot=\"0.333333\""),
              std::string::npos);
}

TEST(Documentation, itsExamplesHoldWhatTheySay)
{
    const auto lut1D = exampleOf<Lut1DOp>("LUT1D");
    ASSERT_TRUE(lut1D);
    EXPECT_EQ(lut1D->getArray().getLength(), 4u);
    EXPECT_EQ(lut1D->getArray().getValues()[5], 290.f);

    // Blue varies fastest: an identity.
    const auto lut3D = exampleOf<Lut3DOp>("LUT3D");
    ASSERT_TRUE(lut3D);
    EXPECT_TRUE(lut3D->isNoOp());
    EXPECT_EQ(lut3D->getInterpolation(), Lut3DOp::INTERPOLATION_TETRAHEDRAL);

    const auto gamma = exampleOf<GammaOp>("Gamma");
    ASSERT_TRUE(gamma);
    EXPECT_EQ(gamma->getParams(0), (GammaOp::Params{2.4, 0.055}));
    EXPECT_EQ(gamma->getParams(2), (GammaOp::Params{2.2, 0.05}));
    EXPECT_EQ(gamma->getParams(3), (GammaOp::Params{1, 0}));

    const auto log = exampleOf<LogOp>("Log");
    ASSERT_TRUE(log);
    EXPECT_EQ(log->getParams(1), (LogOp::Params{0.6, 685, 95, 1, 0}));

    const auto exposureContrast = exampleOf<ExposureContrastOp>("ExposureContrast");
    ASSERT_TRUE(exposureContrast);
    EXPECT_EQ(exposureContrast->getExposure()->get(), -0.5);
    EXPECT_TRUE(exposureContrast->getExposure()->isDynamic());
    EXPECT_TRUE(exposureContrast->getContrast()->isDynamic());

    const auto cdl = exampleOf<CDLOp>("ASC_CDL");
    ASSERT_TRUE(cdl);
    EXPECT_EQ(cdl->getOffset(), (CDLOp::Params{0.01, 0, -0.01}));
    EXPECT_EQ(cdl->getSaturation(), 0.9);

    const auto hueVector = exampleOf<HueVectorOp>("HueVector");
    ASSERT_TRUE(hueVector);
    EXPECT_EQ(hueVector->getParameters(), (HueVectorOp::Params{30, 60, 0.8}));

    const auto reference = exampleOf<ReferenceOp>("Reference");
    ASSERT_TRUE(reference);
    EXPECT_EQ(reference->getPath(), "display/broadcast/CIE-XYZ_to_HD-video.ctf");
    EXPECT_EQ(reference->getBasePath(), BASE_PATH_BRELWICK);
}
