#include "tests/utils/commaLocale.h"
#include "tests/xml/temporaryDirectory.h"
#include "tests/xml/withoutPrivileges.h"
#include "tests/xml/written.h"
#include "transform/gammaOp.h"
#include "transform/lut3DOp.h"

#include <boost/make_shared.hpp>
#include <cmath>
#include <fstream>
#include <iterator>

using namespace Color;

namespace {

constexpr const char* kMatrixText = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                                    "<ProcessList version=\"1.3\" id=\"m\">\n"
                                    "   <Matrix inBitDepth=\"32f\" outBitDepth=\"32f\">\n"
                                    "      <Array dim=\"3 3 3\">\n"
                                    "            0.5               0               0\n"
                                    "              0             0.5               0\n"
                                    "              0               0             0.5\n"
                                    "      </Array>\n"
                                    "   </Matrix>\n"
                                    "</ProcessList>\n";

ColorTransformPtr makeMatrixTransform()
{
    const auto transform = boost::make_shared<Transform>("m", "", Descriptions(), "", "");
    auto* matrix = new MatrixOp;
    const float values[] = {0.5F, 0, 0, 0, 0.5F, 0, 0, 0, 0.5F};
    matrix->setMatrix3x3(values);
    transform->getOpList().append(matrix);
    return transform;
}

/// Its one op has a gamma below 1.
ColorTransformPtr makeInvalidTransform()
{
    const auto transform = boost::make_shared<Transform>();
    transform->setId("g");
    transform->getOpList().append(
        new GammaOp(BIT_DEPTH_32f, BIT_DEPTH_32f, GammaOp::STYLE_BASIC_FWD, {0.5}, {0.5}, {0.5}));
    return transform;
}

void write(const ColorTransformPtr& transform, const std::string& path) { XMLTransformWriter().write(transform, path); }

std::string contentOf(const std::string& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

TEST(XMLTransformWriter, writesADocumentToAStream) { EXPECT_EQ(Ctf::write(makeMatrixTransform()), kMatrixText); }

TEST(XMLTransformWriter, writesADocumentToAFile)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("m.ctf");
    write(makeMatrixTransform(), path);
    EXPECT_EQ(contentOf(path), kMatrixText);
    XMLTransformReader reader;
    reader.readFile(path);
    EXPECT_TRUE(reader.getTransform()->isEqual(*makeMatrixTransform()));
}

TEST(XMLTransformWriter, writesOverAnExistingFile)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("m.ctf", std::string(10000, 'x'));
    write(makeMatrixTransform(), path);
    EXPECT_EQ(contentOf(path), kMatrixText);
}

TEST(XMLTransformWriter, givesAnIdToATransformThatHasNone)
{
    const auto transform = boost::make_shared<Transform>();
    transform->getOpList().append(new MatrixOp);
    const std::string text = Ctf::write(transform);
    EXPECT_EQ(transform->getId().size(), 36U);
    EXPECT_NE(text.find(" id=\"" + transform->getId() + "\">"), std::string::npos);
}

TEST(XMLTransformWriter, localeDoesNotMatter)
{
    const CommaLocale locale;
    EXPECT_EQ(Ctf::write(makeMatrixTransform()), kMatrixText);
}

TEST(XMLTransformWriter, whatAFileHoldsSurvivesAndTheTextStaysTheSame)
{
    for (const char* name :
         {"everything_1_6.ctf", "curves_1_6.ctf", "grading_1_6.ctf", "luts.ctf", "matrix_1_2.ctf", "no_version.ctf",
          "range.ctf", "ops_1_2.ctf", "ops_1_3.ctf", "ops_1_4.ctf", "ops_1_5.ctf", "ops_1_6.ctf"}) {
        SCOPED_TRACE(name);
        XMLTransformReader reader;
        reader.readFile(std::string(MORVANE_TEST_DATA "/ctf/") + name);
        const ColorTransformPtr transform = reader.getTransform();
        const std::string text = Ctf::write(transform);
        const ColorTransformPtr readBack = Ctf::read(text);
        EXPECT_TRUE(readBack->isEqual(*transform)) << text;
        EXPECT_EQ(readBack->getDescriptions(), transform->getDescriptions());
        EXPECT_EQ(Ctf::write(readBack), text);
    }
}

TEST(XMLTransformWriter, refusesNull)
{
    std::ostringstream stream;
    Ctf::expectFailure(failureOf([&] { XMLTransformWriter().write(nullptr, stream); }), 0x3030001, "Transform null",
                       "COLOR:XML:WRITER");
    EXPECT_EQ(stream.str(), "");
}

TEST(XMLTransformWriter, refusesATransformThatIsNotValidBeforeItWrites)
{
    std::ostringstream stream;
    Ctf::expectFailure(failureOf([&] { XMLTransformWriter().write(makeInvalidTransform(), stream); }), 0x3010002,
                       "Transform invalid: 'Parameter 0.500000 < lower bound 1.000000'", "COLOR:XML:ALL");
    EXPECT_EQ(stream.str(), "");
}

TEST(XMLTransformWriter, aFileThatCouldBeOpenedIsEmptyAfterARefusal)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("g.ctf", "former content");
    EXPECT_EQ(failureOf([&] { write(makeInvalidTransform(), path); }).id, 0x3010002U);
    EXPECT_EQ(contentOf(path), "");
}

TEST(XMLTransformWriter, refusesAPathWithoutADirectory)
{
    const TemporaryDirectory directory;
    const std::string path = directory.getPath("missing/m.ctf");
    Ctf::expectFailure(failureOf([&] { write(makeMatrixTransform(), path); }), 0x3030004,
                       "Invalid path: '" + path + "'", "COLOR:XML:WRITER");
    const std::string belowFile = directory.write("file") + "/m.ctf";
    Ctf::expectFailure(failureOf([&] { write(makeMatrixTransform(), belowFile); }), 0x3030004,
                       "Invalid path: '" + belowFile + "'", "COLOR:XML:WRITER");
    Ctf::expectFailure(failureOf([&] { write(makeMatrixTransform(), ""); }), 0x3030004, "Invalid path: ''",
                       "COLOR:XML:WRITER");
}

TEST(XMLTransformWriter, refusesADirectory)
{
    const TemporaryDirectory directory;
    boost::filesystem::create_directory(directory.getPath("m.ctf"));
    const std::string path = directory.getPath("m.ctf");
    Ctf::expectFailure(failureOf([&] { write(makeMatrixTransform(), path); }), 0x3030002,
                       "Unable to write file: '" + path + "'.  Check directory permissions.", "COLOR:XML:WRITER");
    // A name alone stands in the current directory.
    Ctf::expectFailure(failureOf([] { write(makeMatrixTransform(), "."); }), 0x3030002,
                       "Unable to write file: '.'.  Check directory permissions.", "COLOR:XML:WRITER");
}

TEST(XMLTransformWriter, respectsPermissions)
{
    const TemporaryDirectory directory;
    const std::string readOnlyFile = directory.write("m.ctf", "former content");
    boost::filesystem::permissions(readOnlyFile, boost::filesystem::owner_read);
    const std::string readOnlyDirectory = directory.getPath("d");
    boost::filesystem::create_directory(readOnlyDirectory);
    boost::filesystem::permissions(readOnlyDirectory, boost::filesystem::owner_read | boost::filesystem::owner_exe);
    const std::string newFile = readOnlyDirectory + "/m.ctf";
    {
        const WithoutPrivileges scope;
        Ctf::expectFailure(failureOf([&] { write(makeMatrixTransform(), readOnlyFile); }), 0x3030003,
                           "Unable to overwrite existing file: '" + readOnlyFile + "'.  Check file permissions.",
                           "COLOR:XML:WRITER");
        Ctf::expectFailure(failureOf([&] { write(makeMatrixTransform(), newFile); }), 0x3030002,
                           "Unable to write file: '" + newFile + "'.  Check directory permissions.",
                           "COLOR:XML:WRITER");
    }
    EXPECT_EQ(contentOf(readOnlyFile), "former content");
    boost::filesystem::permissions(readOnlyDirectory, boost::filesystem::owner_all);
}

TEST(XMLTransformWriter, aPathThatTheFileSystemCannotLookAtFails)
{
    const std::string path = "/tmp/" + std::string(300, 'n') + "/m.ctf";
    const Failure failure = failureOf([&] { write(makeMatrixTransform(), path); });
    EXPECT_EQ(failure.id, 0x3060004U);
    EXPECT_EQ(failure.category, "COLOR:XML:IO_READER");
    const std::string start = "Filesystem error for '" + path + "': '";
    EXPECT_EQ(failure.message.substr(0, start.size()), start);
    // The rest is the library's own text.
    EXPECT_NE(failure.message.find("File name too long", start.size()), std::string::npos);
}

TEST(XMLTransformWriter, aFullDiskIsAFailure)
{
    const Failure wanted = {0x3060004, "COLOR:XML:IO_READER",
                            "Filesystem error for '/dev/full': 'No space left on device"};
    // A small document meets it at the end, a large one on the way.
    EXPECT_EQ(failureOf([] { write(makeMatrixTransform(), "/dev/full"); }), wanted);
    const auto large = boost::make_shared<Transform>();
    large->setId("l");
    large->getOpList().append(new Lut3DOp(17));
    EXPECT_EQ(failureOf([&] { write(large, "/dev/full"); }), wanted);
}
