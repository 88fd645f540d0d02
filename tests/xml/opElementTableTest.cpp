#include "xml/opElementTable.h"

#include "tests/xml/ctf.h"
#include "xml/matrixElt.h"
#include "xml/rangeElt.h"

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

private:
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

TEST_F(OpElementTable, matrixChangesItsFormAboveVersion_1_2)
{
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float version : {-infinity, -1.f, 0.f, 1.f, 1.2f}) {
        EXPECT_TRUE(makes<MatrixElt>(OP_MATRIX, version)) << version;
    }
    for (const float version : {std::nextafter(1.2f, 2.f), 1.25f, 1.3f, 1.35f, 1.6f}) {
        EXPECT_TRUE(makes<MatrixElt_1_3>(OP_MATRIX, version)) << version;
    }
    EXPECT_EQ(make(OP_MATRIX, std::nextafter(1.6f, 2.f)), nullptr);
}

TEST_F(OpElementTable, rangeIsInEveryVersion)
{
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float version : {-infinity, 0.f, 1.2f, 1.35f, 1.6f}) {
        EXPECT_TRUE(makes<RangeElt>(OP_RANGE, version)) << version;
    }
    EXPECT_EQ(make(OP_RANGE, std::nextafter(1.6f, 2.f)), nullptr);
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
