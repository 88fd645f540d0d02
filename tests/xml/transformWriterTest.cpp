#include "tests/xml/written.h"

#include "transform/CDLOp.h"
#include "transform/ditherOp.h"
#include "transform/exposureContrastOp.h"
#include "transform/functionOp.h"
#include "transform/gammaOp.h"
#include "transform/gamutMapOp.h"
#include "transform/hueVectorOp.h"
#include "transform/invLut1DOp.h"
#include "transform/logOp.h"
#include "transform/lut3DOp.h"
#include "xml/transformWriter.h"

#include <boost/make_shared.hpp>

using namespace Color;

namespace {

ColorTransformPtr transformOf(Op* op)
{
    const auto transform = boost::make_shared<Transform>("t", "", Descriptions(), "", "");
    transform->getOpList().append(op);
    return transform;
}

/// The value of the attribute `version`, which comes first.
std::string versionOf(const ColorTransformPtr& transform)
{
    const std::string start = "<ProcessList version=\"";
    const std::string text = Ctf::write(transform);
    const std::size_t begin = text.find(start) + start.size();
    return text.substr(begin, text.find('"', begin) - begin);
}

std::string writeBare(const Transform& transform)
{
    std::ostringstream stream;
    XmlFormatter formatter(stream);
    Xml::Writer::TransformWriter(formatter, transform).write();
    return stream.str();
}

} // namespace

TEST(TransformWriter, aTransformWithoutTextsHasAnIdAlone)
{
    EXPECT_EQ(writeBare(*transformOf(new MatrixOp)), "<ProcessList version=\"1.3\" id=\"t\">\n"
                                                     "   <Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                                                     "      <Array dim=\"3 3 3\">\n"
                                                     "              1               0               0\n"
                                                     "              0               1               0\n"
                                                     "              0               0               1\n"
                                                     "      </Array>\n"
                                                     "   </Matrix>\n"
                                                     "</ProcessList>\n");
    EXPECT_EQ(writeBare(Transform()), "<ProcessList version=\"1.3\" id=\"\">\n</ProcessList>\n");
}

TEST(TransformWriter, writesEverythingInOrder)
{
    Transform transform("a<b&c", "\"name\"", {"one", "two > one"}, "in", "out");
    transform.setInverseOf("other's");
    Metadata& info = transform.getMetadata();
    info.addChild("Author").setValue("A & B");
    Metadata& shot = info.addChild("Shot");
    shot.addChild("Scene").setValue("12");
    shot.addChild("Empty");
    shot.addChild("Scene").setValue("13");
    transform.getOpList().append(new GamutMapOp);
    transform.getOpList().append(new RangeOp);
    EXPECT_EQ(writeBare(transform),
              "<ProcessList version=\"1.4\" id=\"a&lt;b&amp;c\" name=\"&quot;name&quot;\" inverseOf=\"other&apos;s\">\n"
              "   <Description>one</Description>\n"
              "   <Description>two &gt; one</Description>\n"
              "   <InputDescriptor>in</InputDescriptor>\n"
              "   <OutputDescriptor>out</OutputDescriptor>\n"
              "   <Info>\n"
              "      <Author>A &amp; B</Author>\n"
              "      <Shot>\n"
              "         <Scene>12</Scene>\n"
              "         <Empty></Empty>\n"
              "         <Scene>13</Scene>\n"
              "      </Shot>\n"
              "   </Info>\n"
              "   <GamutMap inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"none\">\n"
              "   </GamutMap>\n"
              "   <Range inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
              "   </Range>\n"
              "</ProcessList>\n");
    const auto readBack = Ctf::read(writeBare(transform));
    EXPECT_TRUE(readBack->isEqual(transform));
    EXPECT_EQ(readBack->getDescriptions(), transform.getDescriptions());
    EXPECT_EQ(readBack->getInputDescriptor(), "in");
    EXPECT_EQ(readBack->getOutputDescriptor(), "out");
    EXPECT_EQ(readBack->getInverseOf(), "other's");
}

TEST(TransformWriter, writesARootOfMetadataThatHasAValue)
{
    Transform transform("t", "", {}, "", "");
    transform.getMetadata().setValue("plain");
    EXPECT_EQ(writeBare(transform), "<ProcessList version=\"1.3\" id=\"t\">\n   <Info>plain</Info>\n</ProcessList>\n");
}

TEST(TransformWriter, theVersionIsTheLowestThatHoldsAllOps)
{
    EXPECT_EQ(versionOf(transformOf(new Lut1DOp(2))), "1.3");
    EXPECT_EQ(versionOf(transformOf(new InvLut1DOp(Lut1DOp(2)))), "1.3");
    EXPECT_EQ(versionOf(transformOf(new Lut3DOp(2))), "1.3");
    EXPECT_EQ(versionOf(transformOf(new MatrixOp)), "1.3");
    EXPECT_EQ(versionOf(transformOf(new RangeOp)), "1.3");
    EXPECT_EQ(versionOf(transformOf(new GammaOp)), "1.3");
    EXPECT_EQ(versionOf(transformOf(new ExposureContrastOp)), "1.3");
    EXPECT_EQ(versionOf(transformOf(new LogOp)), "1.3");
    EXPECT_EQ(versionOf(transformOf(new CDLOp)), "1.3");
    EXPECT_EQ(versionOf(transformOf(new GamutMapOp)), "1.4");
    // Readers take it from 1.3 on.
    EXPECT_EQ(versionOf(transformOf(new DitherOp(BIT_DEPTH_32f, BIT_DEPTH_32f, BIT_DEPTH_8i))), "1.4");
    EXPECT_EQ(versionOf(transformOf(
                  new HueVectorOp(BIT_DEPTH_32f, BIT_DEPTH_32f, HueVectorOp::STYLE_YCH_FWD, {30, 60, 0.5}))),
              "1.4");
    auto* hueAdjusted = new Lut1DOp(2);
    hueAdjusted->setHueAdjust(Lut1DOp::HUE_ADJUST_DW3);
    const auto transform = transformOf(hueAdjusted);
    EXPECT_EQ(versionOf(transform), "1.4");
    transform->getOpList().append(
        new GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GammaOp::STYLE_BASIC_FWD, {1.0}, {1.0}, {1.0}, {2.0}));
    EXPECT_EQ(versionOf(transform), "1.5");
    transform->getOpList().append(new MatrixOp);
    EXPECT_EQ(versionOf(transform), "1.5");
}

TEST(TransformWriter, aFunctionIsLeftOutButCounts)
{
    const auto transform = transformOf(new RangeOp);
    transform->getOpList().append(new FunctionOp);
    transform->getOpList().append(new GamutMapOp);
    EXPECT_EQ(writeBare(*transform), "<ProcessList version=\"1.6\" id=\"t\">\n"
                                     "   <Range inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                                     "   </Range>\n"
                                     "   <GamutMap inBitDepth=\"32f\" outBitDepth=\"32f\" style=\"none\">\n"
                                     "   </GamutMap>\n"
                                     "</ProcessList>\n");
}

TEST(TransformWriter, alphaOfAMoncurveGammaIsTheIdentityWhenItIsNotWritten)
{
    // The second op makes the file one of a version in which alpha has parameters.
    const auto transform = transformOf(new GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GammaOp::STYLE_MONCURVE_FWD,
                                                   {2.4, 0.055}, {2.4, 0.055}, {2.4, 0.055}));
    transform->getOpList().append(
        new GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GammaOp::STYLE_BASIC_FWD, {1.5}, {2.0}, {1.5}, {2.0}));
    EXPECT_EQ(versionOf(transform), "1.5");
    EXPECT_TRUE(Ctf::read(Ctf::write(transform))->isEqual(*transform));
}
