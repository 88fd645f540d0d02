#include "xml/opElementTable.h"

#include "tests/xml/ctf.h"
#include "xml/CDLElt.h"
#include "xml/ditherElt.h"
#include "xml/exposureContrastElt.h"
#include "xml/gammaElt.h"
#include "xml/gamutMapElt.h"
#include "xml/hueVectorElt.h"
#include "xml/logElt.h"
#include "xml/lut1DElt.h"
#include "xml/lut3DElt.h"
#include "xml/matrixElt.h"
#include "xml/rangeElt.h"
#include "xml/referenceElt.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <typeinfo>
#include <vector>

using namespace Color;
using namespace Color::Xml::Reader;

namespace {

class OpElementTable : public testing::Test
{
protected:
    std::unique_ptr<OpElt> make(OpType type, float version)
    {
        return makeOpElement(type, version, "x", m_parent, m_context);
    }

    template <class Elt>
    bool makes(OpType type, float version)
    {
        const auto element = make(type, version);
        if (!element) return false;
        const OpElt& made = *element;
        return typeid(made) == typeid(Elt);
    }

    /// Expects that only versions up to a boundary make the old form, and those above it up to 1.6 the recent one.
    template <class OldElt, class RecentElt>
    void expectChange(OpType type, float boundary)
    {
        for (const float version : {-kInfinity, -1.f, 0.f, 1.f, 1.2f, boundary}) {
            EXPECT_TRUE(makes<OldElt>(type, version)) << version;
        }
        for (const float version : {std::nextafter(boundary, 2.f), boundary + 0.05f, 1.5f, 1.6f}) {
            EXPECT_TRUE(makes<RecentElt>(type, version)) << version;
        }
        EXPECT_EQ(make(type, kAboveHighest), nullptr);
    }

    template <class Elt>
    void expectInEveryVersion(OpType type)
    {
        expectChange<Elt, Elt>(type, 1.2f);
    }

    template <class Elt>
    void expectFrom(OpType type, float first)
    {
        for (const float version : {-kInfinity, 0.f, 1.2f, std::nextafter(first, 0.f)}) {
            EXPECT_EQ(make(type, version), nullptr) << version;
        }
        for (const float version : {first, std::nextafter(first, 2.f), first + 0.05f, 1.5f, 1.6f}) {
            EXPECT_TRUE(makes<Elt>(type, version)) << version;
        }
        EXPECT_EQ(make(type, kAboveHighest), nullptr);
    }

private:
    static constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const float kAboveHighest = std::nextafter(1.6f, 2.f);
    ReadContext m_context;
    TransformElt m_parent{"ProcessList", m_context};
};

/// Reads the file that has every op of a version.
ColorTransformPtr readOpsOf(const std::string& version)
{
    XMLTransformReader reader;
    reader.readFile(MORVANE_TEST_DATA "/ctf/ops_" + version + ".ctf");
    return reader.getTransform();
}

std::vector<OpType> opTypesOf(const ColorTransformPtr& transform)
{
    std::vector<OpType> types;
    for (std::size_t i = 0; i < transform->getOpList().size(); ++i)
        types.push_back(transform->getOpList().get(i)->getOpType());
    return types;
}

} // namespace

TEST_F(OpElementTable, knowsTheNameOfEveryOpElement)
{
    EXPECT_EQ(findOpElement("LUT1D"), OP_LUT_1D);
    EXPECT_EQ(findOpElement("InverseLUT1D"), OP_INVERSE_LUT_1D);
    EXPECT_EQ(findOpElement("LUT3D"), OP_LUT_3D);
    EXPECT_EQ(findOpElement("Matrix"), OP_MATRIX);
    EXPECT_EQ(findOpElement("Range"), OP_RANGE);
    EXPECT_EQ(findOpElement("Reference"), OP_REFERENCE);
    EXPECT_EQ(findOpElement("Gamma"), OP_GAMMA);
    EXPECT_EQ(findOpElement("ExposureContrast"), OP_EXPOSURE_CONTRAST);
    EXPECT_EQ(findOpElement("Log"), OP_LOG);
    EXPECT_EQ(findOpElement("ASC_CDL"), OP_CDL);
    EXPECT_EQ(findOpElement("Dither"), OP_DITHER);
    EXPECT_EQ(findOpElement("GamutMap"), OP_GAMUT_MAP);
    EXPECT_EQ(findOpElement("HueVector"), OP_HUE_VECTOR);
    EXPECT_EQ(findOpElement("asc_cdl"), OP_CDL);
}

TEST_F(OpElementTable, otherNamesAreNoOpElements)
{
    for (const char* name : {"Function", "IndexMap", "Array", "ProcessList", "LUT2D", ""}) {
        EXPECT_EQ(findOpElement(name), std::nullopt) << name;
    }
}

TEST_F(OpElementTable, someOpsChangeTheirFormAboveAVersion)
{
    expectChange<MatrixElt, MatrixElt_1_3>(OP_MATRIX, 1.2f);
    expectChange<Lut1DElt, Lut1DElt_1_4>(OP_LUT_1D, 1.3f);
    expectChange<GammaElt, GammaElt_1_5>(OP_GAMMA, 1.4f);
}

TEST_F(OpElementTable, someOpsAreInEveryVersion)
{
    expectInEveryVersion<RangeElt>(OP_RANGE);
    expectInEveryVersion<ReferenceElt>(OP_REFERENCE);
    expectInEveryVersion<Lut3DElt>(OP_LUT_3D);
    expectInEveryVersion<ExposureContrastElt>(OP_EXPOSURE_CONTRAST);
}

TEST_F(OpElementTable, someOpsBeginWithAVersion)
{
    expectFrom<InvLut1DElt>(OP_INVERSE_LUT_1D, 1.3f);
    expectFrom<LogElt>(OP_LOG, 1.3f);
    expectFrom<CDLElt>(OP_CDL, 1.3f);
    expectFrom<DitherElt>(OP_DITHER, 1.3f);
    expectFrom<GamutMapElt>(OP_GAMUT_MAP, 1.4f);
    expectFrom<HueVectorElt>(OP_HUE_VECTOR, 1.4f);
}

TEST_F(OpElementTable, versionsThatCannotHoldAnOpAreRefused)
{
    const struct
    {
        const char* version;
        const char* shown;
        const char* name;
    } rows[] = {
        {"", "1.2", "InverseLUT1D"}, {"1.2", "1.2", "Log"},          {"1.25", "1.25", "ASC_CDL"},
        {"1.29", "1.29", "DITHER"},  {"1.3", "1.3", "GamutMap"},     {"1.35", "1.35", "HueVector"},
        {"0", "0", "GamutMap"},      {"-3", "-3", "GamutMap"},       {"1e-10x", "1e-10", "Log"},
        {"1", "1", "Log"},           {"1.234567", "1.23457", "Log"},
    };
    for (const auto& row : rows) {
        Ctf::expectReadFails(Ctf::document(Ctf::op(row.name, ""), row.version), 0x302001d,
                             std::string("Unsupported transform file version '") + row.shown + "' for Op '" + row.name +
                                 "' line 2: test.ctf");
    }
}

TEST_F(OpElementTable, opNamesAreReadInAnyCase)
{
    const auto transform = Ctf::read(Ctf::document(Ctf::op("lut3d", "<ARRAY dim='1 1 1 3'>1 2 3</ARRAY>") +
                                                   Ctf::op("gamutmap", "", " STYLE='none'")));
    EXPECT_EQ(transform->getOpList().get(0)->getOpType(), OP_LUT_3D);
    EXPECT_EQ(transform->getOpList().get(1)->getOpType(), OP_GAMUT_MAP);
}

TEST_F(OpElementTable, aFileOf_1_2_hasTheFirstOps)
{
    const auto transform = readOpsOf("1_2");
    EXPECT_EQ(opTypesOf(transform), (std::vector<OpType>{OP_LUT_1D, OP_LUT_3D, OP_MATRIX, OP_MATRIX, OP_RANGE,
                                                         OP_REFERENCE, OP_GAMMA, OP_EXPOSURE_CONTRAST}));
    const auto& lut = Ctf::getOp<Lut1DOp>(transform, 0);
    EXPECT_EQ(lut.getInterpolation(), Lut1DOp::INTERPOLATION_LINEAR);
    EXPECT_EQ(lut.getHueAdjust(), Lut1DOp::HUE_ADJUST_NONE);
    EXPECT_EQ(lut.getArray().getValues(), (Array::Values{0, 0, 0, 500, 400, 300, 1023, 1000, 900}));
    const auto& matrix = Ctf::getOp<MatrixOp>(transform, 3);
    EXPECT_EQ(matrix.getArray().getValues(),
              (Array::Values{0.9F, 0.1F, 0, 0, 0, 1, 0, 0, 0.2F, 0, 0.8F, 0, 0, 0, 0, 1}));
    EXPECT_EQ(matrix.getOffsets(), (MatrixOp::Offsets{4, 8, 12, 0}));
    const auto& gamma = Ctf::getOp<GammaOp>(transform, 6);
    EXPECT_EQ(gamma.getParams(1), GammaOp::Params{2.2});
    EXPECT_EQ(gamma.getParams(2), GammaOp::Params{2.4});
    EXPECT_EQ(gamma.getParams(3), GammaOp::Params{1});
}

TEST_F(OpElementTable, aFileOf_1_3_addsInversesLogsCDLsAndDither)
{
    const auto transform = readOpsOf("1_3");
    EXPECT_EQ(opTypesOf(transform),
              (std::vector<OpType>{OP_LUT_1D, OP_INVERSE_LUT_1D, OP_LUT_3D, OP_MATRIX, OP_MATRIX, OP_MATRIX, OP_MATRIX,
                                   OP_RANGE, OP_REFERENCE, OP_GAMMA, OP_EXPOSURE_CONTRAST, OP_LOG, OP_LOG, OP_LOG,
                                   OP_CDL, OP_DITHER}));
    const auto& lut = Ctf::getOp<Lut1DOp>(transform, 0);
    EXPECT_EQ(lut.getHueAdjust(), Lut1DOp::HUE_ADJUST_NONE);
    EXPECT_EQ(lut.getArray().getValues(), (Array::Values{0, 0, 0, 500, 500, 500, 1023, 1023, 1023}));
    EXPECT_EQ(Ctf::getOp<MatrixOp>(transform, 4).getOffsets(), (MatrixOp::Offsets{4, 8, 12, 0}));
    EXPECT_EQ(Ctf::getOp<MatrixOp>(transform, 5).getArray().getValues(),
              (Array::Values{0.9F, 0.1F, 0, 0, 0, 1, 0, 0, 0.2F, 0, 0.8F, 0.5F, 0, 0, 0.5F, 1}));
    EXPECT_EQ(Ctf::getOp<MatrixOp>(transform, 6).getOffsets(), (MatrixOp::Offsets{4, 8, 12, 16}));
    EXPECT_EQ(Ctf::getOp<GammaOp>(transform, 9).getParams(3), (GammaOp::Params{1, 0}));
    EXPECT_EQ(Ctf::getOp<LogOp>(transform, 13).getParams(2), (LogOp::Params{0.6, 685, 95, 1, 0}));
    EXPECT_EQ(Ctf::getOp<CDLOp>(transform, 14).getPower(), (CDLOp::Params{1, 1.05, 1.1}));
}

TEST_F(OpElementTable, aFileOf_1_4_addsGamutMapHueVectorAndHueAdjust)
{
    const auto transform = readOpsOf("1_4");
    EXPECT_EQ(opTypesOf(transform), (std::vector<OpType>{OP_LUT_1D, OP_INVERSE_LUT_1D, OP_LUT_3D, OP_MATRIX, OP_RANGE,
                                                         OP_REFERENCE, OP_GAMMA, OP_EXPOSURE_CONTRAST, OP_LOG, OP_LOG,
                                                         OP_CDL, OP_GAMUT_MAP, OP_HUE_VECTOR, OP_DITHER}));
    EXPECT_EQ(Ctf::getOp<Lut1DOp>(transform, 0).getHueAdjust(), Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(Ctf::getOp<InvLut1DOp>(transform, 1).getInterpolation(), Lut1DOp::INTERPOLATION_CUBIC);
    EXPECT_EQ(Ctf::getOp<Lut3DOp>(transform, 2).getInterpolation(), Lut3DOp::INTERPOLATION_4PT_TETRAHEDRAL);
    EXPECT_EQ(Ctf::getOp<GammaOp>(transform, 6).getParams(3), GammaOp::Params{1});
    EXPECT_EQ(Ctf::getOp<CDLOp>(transform, 10).getSaturation(), 1.0);
    EXPECT_EQ(Ctf::getOp<HueVectorOp>(transform, 12).getParameters(), (HueVectorOp::Params{30, 60, 0.8}));
    EXPECT_EQ(Ctf::getOp<DitherOp>(transform, 13).getDitherBitDepth(), BIT_DEPTH_10i);
}

TEST_F(OpElementTable, filesOf_1_5_and_1_6_addGammasOfAlpha)
{
    const auto fifth = readOpsOf("1_5");
    EXPECT_EQ(opTypesOf(fifth), (std::vector<OpType>{OP_LUT_1D, OP_INVERSE_LUT_1D, OP_LUT_3D, OP_MATRIX, OP_RANGE,
                                                     OP_REFERENCE, OP_GAMMA, OP_EXPOSURE_CONTRAST, OP_LOG, OP_RANGE,
                                                     OP_CDL, OP_GAMUT_MAP, OP_HUE_VECTOR, OP_DITHER}));
    EXPECT_EQ(Ctf::getOp<Lut1DOp>(fifth, 0).getArray().getValues(),
              (Array::Values{0, 0, 0, 0.5F, 0.5F, 0.5F, 1, 1, 1}));
    EXPECT_EQ(Ctf::getOp<GammaOp>(fifth, 6).getParams(0), (GammaOp::Params{2.4, 0.055}));
    EXPECT_EQ(Ctf::getOp<GammaOp>(fifth, 6).getParams(3), (GammaOp::Params{1.5, 0.25}));
    EXPECT_EQ(Ctf::getOp<LogOp>(fifth, 8).getParams(2), (LogOp::Params{0.5, 680, 90, 1, 0}));

    const auto sixth = readOpsOf("1_6");
    EXPECT_EQ(opTypesOf(sixth),
              (std::vector<OpType>{OP_LUT_1D, OP_INVERSE_LUT_1D, OP_LUT_3D, OP_MATRIX, OP_RANGE, OP_REFERENCE, OP_GAMMA,
                                   OP_EXPOSURE_CONTRAST, OP_LOG, OP_CDL, OP_GAMUT_MAP, OP_HUE_VECTOR, OP_DITHER}));
    EXPECT_EQ(Ctf::getOp<Lut1DOp>(sixth, 0).getHueAdjust(), Lut1DOp::HUE_ADJUST_DW3);
    EXPECT_EQ(Ctf::getOp<Lut1DOp>(sixth, 0).getArray().getValues(), (Array::Values{0, 0, 0, 1, 0.5F, 65504}));
    EXPECT_EQ(Ctf::getOp<GammaOp>(sixth, 6).getParams(0), GammaOp::Params{1});
    EXPECT_EQ(Ctf::getOp<GammaOp>(sixth, 6).getParams(3), GammaOp::Params{1.5});
}

TEST_F(OpElementTable, aFileOfAVersionIsTooNewForTheOneBefore)
{
    const struct
    {
        const char* version;
        const char* before;
        ErrorId failure;
    } rows[] = {
        {"1_3", "1.2", 0x302001d}, {"1_4", "1.3", 0x302001d}, {"1_5", "1.4", 0x3020013}, // the channel of alpha
    };
    for (const auto& row : rows) {
        std::ifstream file(std::string(MORVANE_TEST_DATA "/ctf/ops_") + row.version + ".ctf");
        std::string text(std::istreambuf_iterator<char>(file), {});
        const std::string attribute = " version=\"1.";
        text.replace(text.find(attribute, text.find("<ProcessList")), attribute.size() + 1,
                     std::string(" version=\"") + row.before);
        EXPECT_EQ(failureOf([&] { Ctf::read(text); }).id, row.failure) << row.version;
    }
}
