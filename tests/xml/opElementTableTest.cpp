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
#include <limits>
#include <typeinfo>

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
