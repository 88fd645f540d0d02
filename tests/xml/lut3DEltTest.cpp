#include "xml/lut3DElt.h"

#include "tests/utils/logRecorder.h"
#include "tests/xml/ctf.h"

using namespace Color;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Pair;

namespace {

/// A cube of two points along each axis, its values the numbers from 0 to 23.
const char* const kCube = "<Array dim='2 2 2 3'>0 1 2 3 4 5 6 7 8 9 10 11 12\n13 14 15 16 17 18 19 20 21 22 23</Array>";

/// The content begins on line 3.
std::string document(const std::string& content, const std::string& attributes = "", const std::string& version = "1.6")
{
    return Ctf::document(Ctf::op("LUT3D", content, attributes), version);
}

std::string array(const std::string& dim, const std::string& numbers)
{
    return "<Array dim='" + dim + "'>" + numbers + "</Array>";
}

const Lut3DOp& getLut(const ColorTransformPtr& transform) { return Ctf::getOp<Lut3DOp>(transform); }

} // namespace

TEST(Lut3DElt, takesTheValuesInTheOrderOfTheFile)
{
    for (const char* version : {"", "0", "1.3", "1.6"}) {
        const auto transform = Ctf::read(
            Ctf::document(std::string("<LUT3D inBitDepth='16f' outBitDepth='12i'>") + kCube + "</LUT3D>", version));
        const Lut3DOp& op = getLut(transform);
        EXPECT_EQ(op.getInBitDepth(), BIT_DEPTH_16f);
        EXPECT_EQ(op.getOutBitDepth(), BIT_DEPTH_12i);
        EXPECT_EQ(op.getArray().getLength(), 2u);
        EXPECT_EQ(op.getArray().getNumColorComponents(), 3u);
        ASSERT_EQ(op.getArray().getValues().size(), 24u);
        for (std::size_t i = 0; i < 24; ++i)
            EXPECT_EQ(op.getArray().getValues()[i], static_cast<float>(i));
        EXPECT_EQ(op.getInterpolation(), Lut3DOp::INTERPOLATION_DEFAULT);
    }
}

TEST(Lut3DElt, readsTheInterpolation)
{
    const auto interpolationOf = [](const char* name) {
        const LogRecorder recorder;
        const auto transform = Ctf::read(document(kCube, std::string(" Interpolation='") + name + "'"));
        EXPECT_TRUE(recorder.lines().empty());
        return getLut(transform).getInterpolation();
    };
    EXPECT_EQ(interpolationOf("trilinear"), Lut3DOp::INTERPOLATION_TRILINEAR);
    EXPECT_EQ(interpolationOf("tetrahedral"), Lut3DOp::INTERPOLATION_TETRAHEDRAL);
    EXPECT_EQ(interpolationOf("4pt tetrahedral"), Lut3DOp::INTERPOLATION_4PT_TETRAHEDRAL);
}

TEST(Lut3DElt, logsAnUnknownInterpolationAndKeepsTheDefault)
{
    for (const std::string name : {"Trilinear", "TETRAHEDRAL", "4pt  tetrahedral", "linear", "default", ""}) {
        const LogRecorder recorder;
        const auto transform = Ctf::read(document(kCube, " interpolation='" + name + "'"));
        EXPECT_EQ(getLut(transform).getInterpolation(), Lut3DOp::INTERPOLATION_DEFAULT);
        EXPECT_THAT(recorder.lines(),
                    ElementsAre(Pair(LOG_LEVEL_DEBUG, "COLOR:XML:READER: Illegal 'Interpolation' attribute '" + name +
                                                          "' in 'LUT 3D' line 2: test.ctf")));
    }
}

TEST(Lut3DElt, refusesOtherFormsOfDim)
{
    for (const std::string dim : {"2", "2 2 2", "2 2 3 3", "3 2 2 3", "2 3 2 3", "2 2 2 1", "2 2 2 4", "0 0 0 3",
                                  "-2 -2 -2 3", "2 2 2 3 3", "2.5 2.5 2.5 3"}) {
        Ctf::expectReadFails(document(array(dim, "0 1")), 0x302000a,
                             "Illegal 'LUT 3D' dimensions '" + dim + "' line 3: test.ctf");
    }
}

TEST(Lut3DElt, refusesAWrongNumberOfValues)
{
    Ctf::expectReadFails(document(array("2 2 2 3", "1 2 3\n4")), 0x302000b,
                         "Expected 2x2x2x3 Array values, found 4 in 'LUT 3D' line 4: test.ctf");
    // One component does not stand for three here.
    Ctf::expectReadFails(document(array("2 2 2 3", "1 2 3 4 5 6 7 8")), 0x302000b,
                         "Expected 2x2x2x3 Array values, found 8 in 'LUT 3D' line 3: test.ctf");
    Ctf::expectReadFails(document(array("1 1 1 3", "1 2 3\n4")), 0x302000c,
                         "Expected 1x1x1x3 Array, found additional values in 'LUT 3D' line 4: test.ctf");
}

TEST(Lut3DElt, absurdSizesTakeNoMemory)
{
    for (const std::string length : {"130", "2000000", "2000000000", "2147483647"}) {
        const std::string dim = length + " " + length + " " + length + " 3";
        Ctf::expectReadFails(document(array(dim, "1 2 3")), 0x302000b,
                             "Expected " + length + "x" + length + "x" + length +
                                 "x3 Array values, found 3 in 'LUT 3D' line 3: test.ctf");
    }
}

TEST(Lut3DElt, completeGridAbove_129IsRefusedByTheOp)
{
    std::string line;
    for (int i = 0; i < 130; ++i)
        line += " 0 0 0";
    std::string numbers;
    for (int i = 0; i < 130 * 130; ++i)
        numbers += line + "\n";
    Ctf::expectReadFails(document(array("130 130 130 3", numbers)), 0x205000d,
                         "130 exceeds maximum supported dimension 129", "COLOR:TRANSFORM:LUT_3D");
}

TEST(Lut3DElt, withoutArrayTheOpRefusesItself)
{
    Ctf::expectReadFails(document(""), 0x2010004, "Array content empty: Array content for LUT 3D illegal",
                         "COLOR:TRANSFORM:ALL");
    Ctf::expectReadFails(document("", " id='cube'"), 0x2010004, "Array content empty: Array content for cube illegal",
                         "COLOR:TRANSFORM:ALL");
}

TEST(Lut3DElt, finalizingAnArrayThatWasNeverSizedFails)
{
    Xml::Reader::ReadContext context;
    Xml::Reader::TransformElt parent("ProcessList", context);
    Xml::Reader::Lut3DElt element("LUT3D", parent, context);
    Ctf::expectFailure(failureOf([&] { element.finalize(0); }), 0x302000d, "Array state incomplete");
}

TEST(Lut3DElt, takesOneArrayOnly)
{
    const LogRecorder recorder;
    EXPECT_EQ(getLut(Ctf::read(document(kCube + array("x", "7")))).getArray().getValues()[23], 23.f);
    EXPECT_THAT(recorder.lines(),
                ElementsAre(Pair(LOG_LEVEL_DEBUG, EndsWith("test.ctf: : Only one Color::Array allowed per op"))));
}
