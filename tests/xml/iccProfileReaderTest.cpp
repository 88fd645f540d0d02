#include "xml/iccProfileReader.h"

#include "tests/utils/failure.h"
#include "tests/utils/logRecorder.h"
#include "tests/xml/icc.h"
#include "tests/xml/littleCMS.h"
#include "tests/xml/temporaryDirectory.h"
#include "transform/gammaOp.h"
#include "transform/invLut1DOp.h"
#include "transform/matrixOp.h"
#include "transform/referenceOp.h"
#include "xml/fileIOManager.h"

#include <array>
#include <cmath>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>

using namespace Color;

namespace {

constexpr const char* kAdaptation = "Chromatic adaptation (Bradford) from D65 to ICC PCS D50";

using Triple = std::array<double, 3>;

ColorTransformPtr read(const std::string& bytes)
{
    ICCProfileReader reader;
    reader.readProfile(bytes, "test.icc");
    return reader.getTransform();
}

ColorTransformPtr read(const Icc::Profile& profile) { return read(profile.bytes()); }

std::string installedPath(const std::string& name) { return MORVANE_ICC_PROFILES "/" + name; }

/// A profile of the package icc-profiles-free.
std::string loadInstalled(const std::string& name)
{
    std::ifstream stream(installedPath(name), std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(stream), {});
    EXPECT_FALSE(bytes.empty()) << installedPath(name) << ": install the package icc-profiles-free";
    return bytes;
}

/// A copy, which outlives the transform.
template <class OpClass>
OpClass getOp(const ColorTransformPtr& transform, std::size_t index)
{
    return dynamic_cast<const OpClass&>(*transform->getOpList().get(index));
}

void expectFails(const std::string& bytes, ErrorId id, const std::string& message,
                 const std::string& category = "COLOR:XML:ICC_READER")
{
    ICCProfileReader reader;
    EXPECT_EQ(failureOf([&] { reader.readProfile(bytes, "test.icc"); }), (Failure{id, category, message}));
    EXPECT_EQ(reader.getTransform(), nullptr);
}

void expectFails(const Icc::Profile& profile, ErrorId id, const std::string& message,
                 const std::string& category = "COLOR:XML:ICC_READER")
{
    expectFails(profile.bytes(), id, message, category);
}

/// The id of the failure, 0 when there is none. Nothing is left behind by one.
ErrorId idOfRead(const std::string& bytes)
{
    ICCProfileReader reader;
    const Failure failure = failureOf([&] { reader.readProfile(bytes, "test.icc"); });
    EXPECT_EQ(failure.id == 0, reader.getTransform() != nullptr);
    return failure.id;
}

Icc::Profile withTag(const std::string& signature, const std::string& data)
{
    Icc::Profile profile = Icc::display({0x0233});
    profile[signature] = data;
    return profile;
}

// The slow way through the ops, written down here once more.

Triple multiply(const MatrixOp& op, const Triple& in)
{
    Triple out{};
    for (std::size_t row = 0; row < 3; ++row) {
        for (std::size_t column = 0; column < 3; ++column)
            out[row] += static_cast<double>(op.getArray().getValues()[4 * row + column]) * in[column];
    }
    return out;
}

/// Where between 0 and 1 a table has a value, by bisection.
double invertTable(const InvLut1DOp& op, std::size_t channel, double value)
{
    const auto& values = op.getArray().getValues();
    const std::size_t last = op.getArray().getLength() - 1;
    const auto at = [&](double place) {
        const double position = place * static_cast<double>(last);
        const auto below = std::min(static_cast<std::size_t>(position), last - 1);
        const double fraction = position - static_cast<double>(below);
        return static_cast<double>(values[3 * below + channel]) * (1 - fraction) +
               static_cast<double>(values[3 * below + 3 + channel]) * fraction;
    };
    double low = 0;
    double high = 1;
    for (int i = 0; i < 50; ++i) {
        const double middle = (low + high) / 2;
        (at(middle) < value ? low : high) = middle;
    }
    return low;
}

/// From XYZ of the connection space, adapted to D50, to the device, 0 to 1.
Triple deviceFromConnection(const ColorTransformPtr& transform, const Triple& xyz)
{
    Triple rgb = multiply(getOp<MatrixOp>(transform, 1), xyz);
    const Op* tone = transform->getOpList().get(3);
    for (std::size_t channel = 0; channel < 3; ++channel) {
        if (const auto* gamma = dynamic_cast<const GammaOp*>(tone)) {
            rgb[channel] = std::pow(rgb[channel], 1 / gamma->getParams(channel)[0]);
        } else if (const auto* table = dynamic_cast<const InvLut1DOp*>(tone)) {
            rgb[channel] = invertTable(*table, channel, rgb[channel]);
        }
    }
    return rgb;
}

} // namespace

TEST(ICCProfileReader, goesFromTheConnectionSpaceToTheDevice)
{
    const ColorTransformPtr transform = read(Icc::display({0x0233}));
    EXPECT_EQ(transform->getInputDescriptor(), "ICC XYZ PCS");
    EXPECT_EQ(transform->getOutputDescriptor(), "device RGB");
    EXPECT_FALSE(transform->getId().empty());

    const OpList& ops = transform->getOpList();
    ASSERT_EQ(ops.size(), 4u);
    const struct
    {
        OpType type;
        BitDepth out;
        const char* description;
    } rows[] = {
        {OP_MATRIX, BIT_DEPTH_16f, kAdaptation},
        {OP_MATRIX, BIT_DEPTH_16f, "RGB primary matrix from ICC profile"},
        {OP_REFERENCE, BIT_DEPTH_16f, kAdaptation},
        {OP_GAMMA, BIT_DEPTH_16i, "Tone response curve from ICC profile"},
    };
    for (std::size_t i = 0; i < ops.size(); ++i) {
        EXPECT_EQ(ops.get(i)->getOpType(), rows[i].type);
        EXPECT_EQ(ops.get(i)->getInBitDepth(), BIT_DEPTH_16f);
        EXPECT_EQ(ops.get(i)->getOutBitDepth(), rows[i].out);
        EXPECT_EQ(ops.get(i)->getDescriptions(), Descriptions{rows[i].description});
        EXPECT_EQ(ops.get(i)->getName(), "");
        EXPECT_EQ(ops.get(i)->getId(), "");
    }
}

TEST(ICCProfileReader, adaptsD65ToD50)
{
    const auto& op = getOp<MatrixOp>(read(Icc::display({})), 0);
    EXPECT_EQ(op.getArray().getValues(),
              (Array::Values{1.04788959F, 0.02292064F, -0.05021831F, 0, 0.02958442F, 0.99048191F, -0.01707953F, 0,
                             -0.00925219F, 0.01507304F, 0.75166893F, 0, 0, 0, 0, 1}));
    EXPECT_FALSE(op.hasOffsets());
}

TEST(ICCProfileReader, invertsTheColorants)
{
    // Columns (0.5, 0.25, 0), (0, 0.5, 0) and (0.125, 0, 0.5).
    Icc::Profile profile = Icc::display({});
    profile["rXYZ"] = Icc::xyz(0x8000, 0x4000, 0);
    profile["gXYZ"] = Icc::xyz(0, 0x8000, 0);
    profile["bXYZ"] = Icc::xyz(0x2000, 0, 0x8000);
    const auto& op = getOp<MatrixOp>(read(profile), 1);
    EXPECT_EQ(op.getArray().getValues(), (Array::Values{2, 0, -0.5, 0, -1, 2, 0.25, 0, 0, 0, 2, 0, 0, 0, 0, 1}));
    EXPECT_FALSE(op.hasOffsets());
}

TEST(ICCProfileReader, colorantsAreSignedAndMayBeLarge)
{
    Icc::Profile profile = Icc::display({});
    profile["rXYZ"] = Icc::xyz(-0x10000, 0, 0);
    profile["gXYZ"] = Icc::xyz(0, INT32_MIN, 0);
    profile["bXYZ"] = Icc::xyz(0, 0, 1);
    EXPECT_EQ(getOp<MatrixOp>(read(profile), 1).getArray().getValues(),
              (Array::Values{-1, 0, 0, 0, 0, -1.0F / 32768, 0, 0, 0, 0, 65536, 0, 0, 0, 0, 1}));
}

TEST(ICCProfileReader, colorantsWithoutInverseLeaveAMatrixThatDoesNothing)
{
    Icc::Profile profile = Icc::display({});
    profile["gXYZ"] = profile["rXYZ"];
    const ColorTransformPtr transform = read(profile);
    EXPECT_EQ(getOp<MatrixOp>(transform, 1).getArray().getValues(),
              (Array::Values{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}));
    EXPECT_EQ(transform->getOpList().get(1)->getDescriptions(), Descriptions{"RGB primary matrix from ICC profile"});
}

TEST(ICCProfileReader, leavesTheGamutMapToTheAlias)
{
    const ColorTransformPtr transform = read(Icc::display({}));
    const auto& op = getOp<ReferenceOp>(transform, 2);
    EXPECT_EQ(op.getAlias(), "defaultGamutMap");
    EXPECT_EQ(op.getPath(), "");
    EXPECT_TRUE(op.isUnresolved());
    EXPECT_TRUE(transform->hasUnresolvedReference());
}

TEST(ICCProfileReader, noEntriesAreTheIdentity)
{
    const auto& op = getOp<Lut1DOp>(read(Icc::display({})), 3);
    EXPECT_EQ(op.getOpType(), OP_LUT_1D);
    EXPECT_EQ(op.getArray().getLength(), 2u);
    EXPECT_EQ(op.getArray().getValues(), (Array::Values{0, 0, 0, 65535, 65535, 65535}));
    EXPECT_EQ(op.getInterpolation(), Lut1DOp::INTERPOLATION_DEFAULT);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_NONE);
}

TEST(ICCProfileReader, oneEntryIsAGamma)
{
    Icc::Profile profile = Icc::display({0x0233});
    profile["gTRC"] = Icc::curve({0x0100});
    profile["bTRC"] = Icc::curve({0x0a00});
    const auto& op = getOp<GammaOp>(read(profile), 3);
    EXPECT_EQ(op.getStyle(), GammaOp::STYLE_BASIC_REV);
    EXPECT_EQ(op.getParams(0), GammaOp::Params{2.19921875});
    EXPECT_EQ(op.getParams(1), GammaOp::Params{1});
    EXPECT_EQ(op.getParams(2), GammaOp::Params{10});
    EXPECT_EQ(op.getParams(3), GammaOp::Params{1});
}

TEST(ICCProfileReader, everyGammaKeepsItsEightFractionalBits)
{
    for (unsigned entry = 0x0100; entry <= 0x0a00; ++entry) {
        const auto& op = getOp<GammaOp>(read(Icc::display({entry})), 3);
        ASSERT_EQ(op.getParams(0)[0], entry / 256.0);
        // The entry as a table would hold it, brought back in single precision, is the same.
        ASSERT_EQ(static_cast<float>(op.getParams(0)[0]),
                  static_cast<float>(entry) / 65535.0F * 65535.0F * 0.00390625F);
    }
}

TEST(ICCProfileReader, gammasOutOfBoundsFail)
{
    const char* category = "COLOR:TRANSFORM:GAMMA";
    expectFails(Icc::display({0x0080}), 0x2010011, "Parameter 0.500000 < lower bound 1.000000", category);
    expectFails(Icc::display({0}), 0x2010011, "Parameter 0.000000 < lower bound 1.000000", category);
    expectFails(Icc::display({0x0a01}), 0x2010012, "Parameter 10.003906 > upper bound 10.000000", category);
    expectFails(Icc::display({0xffff}), 0x2010012, "Parameter 255.996094 > upper bound 10.000000", category);
}

TEST(ICCProfileReader, moreEntriesAreATableToInvert)
{
    Icc::Profile profile = Icc::display({0, 0x1000, 0xffff});
    profile["gTRC"] = Icc::curve({1, 0x2000, 0xfffe});
    profile["bTRC"] = Icc::curve({2, 0x3000, 0x8000});
    const auto& op = getOp<InvLut1DOp>(read(profile), 3);
    EXPECT_EQ(op.getArray().getLength(), 3u);
    EXPECT_EQ(op.getArray().getNumColorComponents(), 3u);
    EXPECT_EQ(op.getArray().getValues(), (Array::Values{0, 1 / 65535.0F, 2 / 65535.0F, 4096 / 65535.0F, 8192 / 65535.0F,
                                                        12288 / 65535.0F, 1, 65534 / 65535.0F, 32768 / 65535.0F}));
    EXPECT_EQ(op.getStyle(), InvLut1DOp::STYLE_EXACT);
    EXPECT_EQ(op.getHalfFlags(), HALF_FLAGS_NONE);
    EXPECT_TRUE(op.getRun(0).isIncreasing);
    EXPECT_EQ(op.getRun(2).end, 2u);
}

TEST(ICCProfileReader, longTablesAreRead)
{
    std::vector<unsigned> values;
    for (unsigned i = 0; i < 65536; ++i)
        values.push_back(i);
    const auto& op = getOp<InvLut1DOp>(read(Icc::display(values)), 3);
    ASSERT_EQ(op.getArray().getLength(), 65536u);
    EXPECT_EQ(op.getArray().getValues()[3 * 40000 + 1], 40000 / 65535.0F);
}

TEST(ICCProfileReader, buffersAreNotRead)
{
    ICCProfileReader reader;
    reader.readProfile(Icc::display({}).bytes(), "test.icc");
    EXPECT_EQ(failureOf([&] { reader.readBuffer("text"); }),
              (Failure{0x3080001, "COLOR:XML:ICC_READER", "Internal - Unsupported buffer parsing by ICC reader"}));
    EXPECT_EQ(reader.getTransform(), nullptr);
    EXPECT_EQ(failureOf([&] { reader.readBuffer(nullptr); }).id, 0x3080001u);
}

TEST(ICCProfileReader, connectionSpaceIsXYZ)
{
    // The text has always had a placeholder in it that nothing fills.
    Icc::Profile profile = Icc::display({});
    for (const char* space : {"Lab ", "xyz ", "RGB "}) {
        profile.connectionSpace = space;
        expectFails(profile, 0x3080002, "Unsupported ICC profile connection space %1$: test.icc");
    }
}

TEST(ICCProfileReader, deviceSpaceIsRGB)
{
    Icc::Profile profile = Icc::display({});
    profile.deviceSpace = "CMYK";
    expectFails(profile, 0x3080003, "Unsupported ICC device color space CMYK: test.icc");
    profile.deviceSpace = "Lab ";
    expectFails(profile, 0x3080003, "Unsupported ICC device color space Lab : test.icc");
    profile.deviceSpace = std::string(4, '\0');
    expectFails(profile, 0x3080003, "Unsupported ICC device color space 0x00000000: test.icc");
    // The connection space is looked at first.
    profile.connectionSpace = "Lab ";
    expectFails(profile, 0x3080002, "Unsupported ICC profile connection space %1$: test.icc");
}

TEST(ICCProfileReader, modelIsMatrixAndCurves)
{
    for (const char* signature : {"rXYZ", "gXYZ", "bXYZ", "rTRC", "gTRC", "bTRC"}) {
        Icc::Profile profile = Icc::display({});
        profile.erase(signature);
        // It is looked at before the spaces.
        profile.deviceSpace = "CMYK";
        expectFails(profile, 0x3080004, "Unsupported transform model in ICC profile: test.icc");
    }
    expectFails(Icc::Profile(), 0x3080004, "Unsupported transform model in ICC profile: test.icc");
}

TEST(ICCProfileReader, colorantsAreOneTripleEach)
{
    const std::string one = Icc::xyz(0x8000, 0x8000, 0x8000);
    for (const char* signature : {"rXYZ", "gXYZ", "bXYZ"}) {
        for (const std::string& illegal :
             {one.substr(0, 8), one.substr(0, 19), one + one.substr(8), Icc::data("curv", one.substr(8))}) {
            expectFails(withTag(signature, illegal), 0x3080005, "Illegal matrix tag in ICC profile: test.icc");
        }
        for (const std::string& padded : {one + '\0', one + std::string(11, 'x')})
            EXPECT_NE(read(withTag(signature, padded)), nullptr);
    }
}

TEST(ICCProfileReader, curvesHaveTheEntriesThatTheyTell)
{
    const std::string two = Icc::curve({1, 2});
    for (const char* signature : {"rTRC", "gTRC", "bTRC"}) {
        Icc::Profile profile = Icc::display({1, 2});
        for (const std::string& illegal :
             {two.substr(0, 8), two.substr(0, 11), two.substr(0, 15), Icc::withU32(two, 8, 3),
              Icc::withU32(two, 8, 0x80000002), Icc::withU32(two, 8, 0xffffffff)}) {
            profile[signature] = illegal;
            expectFails(profile, 0x3080006, "Illegal curve tag in ICC profile: test.icc");
        }
        profile[signature] = two + "padding";
        EXPECT_NE(read(profile), nullptr);
    }
}

TEST(ICCProfileReader, curvesHaveOneLength)
{
    for (const char* signature : {"rTRC", "gTRC", "bTRC"}) {
        for (const std::vector<unsigned>& other : {std::vector<unsigned>{}, {0x0100}, {0, 1, 2}}) {
            Icc::Profile profile = Icc::display({0, 0xffff});
            profile[signature] = Icc::curve(other);
            expectFails(profile, 0x3080006, "Illegal curve tag in ICC profile: test.icc");
        }
    }
}

TEST(ICCProfileReader, curvesOfAnotherTypeFail)
{
    // A gamma of 2.0 as a formula.
    const std::string formula = Icc::data("para", Icc::u16(0) + Icc::u16(0) + Icc::u32(0x20000));
    for (const char* signature : {"rTRC", "gTRC", "bTRC"})
        expectFails(withTag(signature, formula), 0x3080006, "Illegal curve tag in ICC profile: test.icc");
    Icc::Profile profile = Icc::display({});
    for (const char* signature : {"rTRC", "gTRC", "bTRC"})
        profile[signature] = formula;
    expectFails(profile, 0x3080006, "Illegal curve tag in ICC profile: test.icc");
}

TEST(ICCProfileReader, criticalFindingsFail)
{
    expectFails("", 0x3080007,
                "Error reading file: critical: the profile ends after 0 bytes, within its header in test.icc");
    Icc::Profile twice = Icc::display({});
    twice.tags.emplace_back("rXYZ", twice["rXYZ"]);
    expectFails(twice, 0x3080007, "Error reading file: critical: there are two tags 'rXYZ' in test.icc");
    // It lacks a tag too, but that is looked at later.
    Icc::Profile truncated = Icc::display({});
    truncated.erase("rXYZ");
    expectFails(truncated.bytes().substr(0, 200), 0x3080007,
                "Error reading file: critical: the profile ends after 200 of the 268 bytes that its header tells; "
                "tag 'gXYZ' of 20 bytes at byte 192 ends behind the 200 bytes of the profile; "
                "tag 'bXYZ' of 20 bytes at byte 212 ends behind the 200 bytes of the profile; "
                "tag 'rTRC' of 12 bytes at byte 232 ends behind the 200 bytes of the profile; and 2 more in test.icc");
}

TEST(ICCProfileReader, refusalsOfLittleCMSFail)
{
    Icc::Profile profile = Icc::display({});
    for (int i = 0; i < 95; ++i)
        profile["t" + std::to_string(100 + i)] = Icc::curve({});
    expectFails(profile, 0x3080007, "Error reading file: Little CMS says: Too many tags (101) in test.icc");
}

TEST(ICCProfileReader, lesserFindingsAreLogged)
{
    const auto linesOf = [](const std::string& bytes) {
        const LogRecorder recorder;
        EXPECT_NE(read(bytes), nullptr);
        return recorder.lines();
    };
    const std::string good = Icc::display({}).bytes();
    EXPECT_EQ(linesOf(good), LogRecorder::Lines());
    EXPECT_EQ(linesOf(good + "x"),
              (LogRecorder::Lines{{Color::LOG_LEVEL_DEBUG,
                                   "COLOR:XML:ICC_READER: Error reading file: warning: the file goes on behind the 300 "
                                   "bytes of the profile in test.icc"}}));
    EXPECT_EQ(
        linesOf(Icc::withU32(good, 12, 0)),
        (LogRecorder::Lines{{Color::LOG_LEVEL_DEBUG,
                             "COLOR:XML:ICC_READER: Error reading file: non-compliant: the profile tells no class "
                             "in test.icc"}}));
}

TEST(ICCProfileReader, readsAgainAfterAFailure)
{
    ICCProfileReader reader;
    const std::string good = Icc::display({}).bytes();
    reader.readProfile(good, "good.icc");
    EXPECT_NE(reader.getTransform(), nullptr);
    EXPECT_EQ(failureOf([&] { reader.readProfile("bad", "bad.icc"); }).id, 0x3080007u);
    EXPECT_EQ(reader.getTransform(), nullptr);
    reader.readProfile(good, "good.icc");
    EXPECT_NE(reader.getTransform(), nullptr);
}

TEST(ICCProfileReader, claimsItsExtensions)
{
    const ICCProfileReader reader;
    EXPECT_STREQ(reader.getName(), "ICC Profile Reader");
    for (const char* name : {"a.icm", "a.icc", "a.pf", "A.ICM", "a.Icc", "/no/such/b.a.PF"})
        EXPECT_TRUE(reader.isFileSupported(name)) << name;
    for (const char* name : {"a", "icc", "a.icc.ctf", "a.iccp", "a.p", "a.", ""})
        EXPECT_FALSE(reader.isFileSupported(name)) << name;
}

TEST(ICCProfileReader, readsFiles)
{
    const TemporaryDirectory directory;
    ICCProfileReader reader;
    reader.readFile(directory.write("a.icc", Icc::display({0x0233}).bytes()));
    EXPECT_TRUE(reader.getTransform()->getOpList().get(3)->isEqual(*read(Icc::display({0x0233}))->getOpList().get(3)));
}

TEST(ICCProfileReader, filesThatCannotBeReadFail)
{
    const TemporaryDirectory directory;
    const auto expectFileFails = [](const std::string& path, const std::string& reason) {
        ICCProfileReader reader;
        EXPECT_EQ(failureOf([&] { reader.readFile(path); }),
                  (Failure{0x3080007, "COLOR:XML:ICC_READER", "Error reading file: " + reason + " in " + path}));
        EXPECT_EQ(reader.getTransform(), nullptr);
    };
    expectFileFails(directory.getPath("missing.icc"), "the file cannot be opened");
    expectFileFails(directory.getPath(""), "the file cannot be read");
    expectFileFails(directory.write("empty.icc"), "critical: the profile ends after 0 bytes, within its header");
    expectFileFails(directory.write("text.icc", std::string(132, '\n')),
                    "critical: the signature at byte 36 is '0x0a0a0a0a' and not 'acsp'");
}

TEST(ICCProfileReader, endlessFilesFail)
{
    ICCProfileReader reader;
    EXPECT_EQ(failureOf([&] { reader.readFile("/dev/zero"); }),
              (Failure{0x3080007, "COLOR:XML:ICC_READER",
                       "Error reading file: critical: the profile has more than 16777216 bytes in /dev/zero"}));
}

TEST(ICCProfileReader, dispatchReachesIt)
{
    const TemporaryDirectory directory;
    for (const char* name : {"a.icm", "a.ICC", "a.pf"}) {
        const std::string path = directory.write(name, Icc::display({}).bytes());
        EXPECT_EQ(FileIOManager::load(path)->getOutputDescriptor(), "device RGB");
    }
    const std::string bad = directory.write("bad.icc", "text");
    EXPECT_EQ(failureOf([&] { FileIOManager::load(bad); }),
              (Failure{0x3080007, "COLOR:XML:ICC_READER",
                       "Error reading file: critical: the profile ends after 4 bytes, within its header in " + bad}));
}

// Profiles of other programs.

TEST(ICCProfileReader, installedProfilesLoadOrTellWhyNot)
{
    const struct
    {
        const char* name;
        ErrorId id;
        OpType tone;
    } rows[] = {
        {"sRGB.icc", 0, OP_INVERSE_LUT_1D},
        {"compatibleWithAdobeRGB1998.icc", 0, OP_GAMMA},
        {"LStar-RGB.icc", 0, OP_INVERSE_LUT_1D},
        {"CineonLog_M.icc", 0, OP_INVERSE_LUT_1D},
        {"CineonLog_M_Knee_10.icc", 0, OP_INVERSE_LUT_1D},
        {"CineonLog_M_Knee_20.icc", 0, OP_INVERSE_LUT_1D},
        {"CineonLog_M_Knee_30.icc", 0, OP_INVERSE_LUT_1D},
        {"CineonLog_M_Knee_60.icc", 0, OP_INVERSE_LUT_1D},
        {"CineLogCurve.icc", 0x3080004, {}},
        {"Gray-CIE_L.icc", 0x3080004, {}},
        {"Gray.icc", 0x3080004, {}},
        {"ITULab.icc", 0x3080004, {}},
        {"LCMSLABI.ICM", 0x3080004, {}},
        {"LCMSXYZI.ICM", 0x3080004, {}},
    };
    for (const auto& row : rows) {
        const std::string path = installedPath(row.name);
        ICCProfileReader reader;
        const Failure failure = failureOf([&] { reader.readFile(path); });
        if (row.id != 0) {
            EXPECT_EQ(failure,
                      (Failure{row.id, "COLOR:XML:ICC_READER", "Unsupported transform model in ICC profile: " + path}));
            continue;
        }
        ASSERT_EQ(failure, kNoFailure) << "from the package icc-profiles-free";
        EXPECT_EQ(reader.getTransform()->getOpList().get(3)->getOpType(), row.tone) << row.name;
    }
}

TEST(ICCProfileReader, gammaOfAnInstalledProfileKeepsItsFixedPrecision)
{
    const auto& op = getOp<GammaOp>(read(loadInstalled("compatibleWithAdobeRGB1998.icc")), 3);
    for (std::size_t channel = 0; channel < 3; ++channel)
        EXPECT_EQ(op.getParams(channel), GammaOp::Params{2.19921875});
}

TEST(ICCProfileReader, misplacedTagsOfAnInstalledProfileAreLogged)
{
    const LogRecorder recorder;
    EXPECT_EQ(idOfRead(loadInstalled("LCMSLABI.ICM")), 0x3080004u);
    ASSERT_EQ(recorder.lines().size(), 2u);
    EXPECT_EQ(recorder.lines()[0],
              std::make_pair(Color::LOG_LEVEL_DEBUG,
                             std::string("COLOR:XML:ICC_READER: Error reading file: warning: tag 'cprt' begins at byte "
                                         "154238, no multiple of 4; tag 'wtpt' begins at byte 154306, no multiple of 4 "
                                         "in test.icc")));
}

TEST(ICCProfileReader, whiteOfD65BecomesFullDeviceRGB)
{
    // CIE 015:2018 gives D65 the chromaticities 0.31272 and 0.32903.
    const Triple white = {0.31272 / 0.32903, 1, (1 - 0.31272 - 0.32903) / 0.32903};
    for (const char* name : {"sRGB.icc", "compatibleWithAdobeRGB1998.icc"}) {
        const ColorTransformPtr transform = read(loadInstalled(name));
        const Triple connection = multiply(getOp<MatrixOp>(transform, 0), white);
        EXPECT_NEAR(connection[0], 0.9642, 3e-4);
        EXPECT_NEAR(connection[1], 1.0, 3e-4);
        EXPECT_NEAR(connection[2], 0.8249, 3e-4);
        for (const double channel : multiply(getOp<MatrixOp>(transform, 1), connection))
            EXPECT_NEAR(channel, 1.0, 2e-3) << name;
    }
}

TEST(ICCProfileReader, agreesWithLittleCMSOnInstalledProfiles)
{
    for (const char* name : {"sRGB.icc", "compatibleWithAdobeRGB1998.icc", "LStar-RGB.icc"}) {
        const std::string bytes = loadInstalled(name);
        const ColorTransformPtr transform = read(bytes);
        // From D50 XYZ within the gamut of sRGB.
        for (const Triple& xyz : {Triple{0.2, 0.2, 0.15},
                                  {0.3, 0.2, 0.05},
                                  {0.1, 0.15, 0.05},
                                  {0.15, 0.1, 0.3},
                                  {0.7, 0.75, 0.6},
                                  {0.02, 0.02, 0.02}}) {
            const Triple ours = deviceFromConnection(transform, xyz);
            const Triple theirs = LittleCMS::deviceFromConnection(bytes, xyz);
            for (std::size_t channel = 0; channel < 3; ++channel) {
                EXPECT_NEAR(ours[channel], theirs[channel], 5e-4) << name << channel;
                EXPECT_GT(theirs[channel], 0.01);
                EXPECT_LT(theirs[channel], 0.99);
            }
        }
    }
}

TEST(ICCProfileReader, readsAGammaOfLittleCMS)
{
    const ColorTransformPtr transform = read(LittleCMS::display(LittleCMS::gamma(1.8)));
    // Little CMS cuts 1.8 off after eight fractional bits.
    EXPECT_EQ(getOp<GammaOp>(transform, 3).getParams(1), GammaOp::Params{460 / 256.0});
    // The white of the connection space.
    for (const double channel : multiply(getOp<MatrixOp>(transform, 1), {0.9642, 1, 0.8249}))
        EXPECT_NEAR(channel, 1.0, 1e-3);
}

TEST(ICCProfileReader, readsATableOfLittleCMS)
{
    const std::vector<uint16_t> values = {0, 3000, 20000, 65535};
    const auto& op = getOp<InvLut1DOp>(read(LittleCMS::display(LittleCMS::table(values))), 3);
    ASSERT_EQ(op.getArray().getLength(), 4u);
    for (std::size_t i = 0; i < values.size(); ++i)
        EXPECT_EQ(op.getArray().getValues()[3 * i], static_cast<float>(values[i]) / 65535.0F);
}

TEST(ICCProfileReader, readsAnIdentityOfLittleCMS)
{
    // Little CMS writes it as a gamma of 1.
    const auto& op = getOp<GammaOp>(read(LittleCMS::display(LittleCMS::gamma(1))), 3);
    EXPECT_EQ(op.getParams(0), GammaOp::Params{1});
    EXPECT_TRUE(op.isNoOp());
}

TEST(ICCProfileReader, formulasOfLittleCMSFail)
{
    expectFails(LittleCMS::display(LittleCMS::gamma(2.2), 4.3), 0x3080006,
                "Illegal curve tag in ICC profile: test.icc");
}

TEST(ICCProfileReader, otherKindsOfProfilesOfLittleCMSFail)
{
    const char* model = "Unsupported transform model in ICC profile: test.icc";
    expectFails(LittleCMS::save(cmsCreateLab4Profile(nullptr)), 0x3080004, model);
    expectFails(LittleCMS::save(cmsCreateXYZProfile()), 0x3080004, model);
    expectFails(LittleCMS::save(cmsCreateInkLimitingDeviceLink(cmsSigCmykData, 250)), 0x3080004, model);

    const auto displayIn = [](cmsColorSpaceSignature connectionSpace, cmsColorSpaceSignature deviceSpace) {
        const cmsHPROFILE profile = LittleCMS::makeDisplay(LittleCMS::gamma(2.2), 2.1);
        cmsSetPCS(profile, connectionSpace);
        cmsSetColorSpace(profile, deviceSpace);
        return LittleCMS::save(profile);
    };
    expectFails(displayIn(cmsSigLabData, cmsSigRgbData), 0x3080002,
                "Unsupported ICC profile connection space %1$: test.icc");
    expectFails(displayIn(cmsSigXYZData, cmsSigCmykData), 0x3080003,
                "Unsupported ICC device color space CMYK: test.icc");
}

// Damage.

TEST(ICCProfileReader, profileCutAtAnyByteFails)
{
    for (const std::string& good :
         {Icc::display({0, 9, 99, 999}).bytes(), loadInstalled("compatibleWithAdobeRGB1998.icc"),
          LittleCMS::display(LittleCMS::gamma(2.2))}) {
        EXPECT_EQ(idOfRead(good), 0u);
        for (std::size_t size = 0; size < good.size(); size += MORVANE_SAMPLE_STEP) {
            const std::string told = std::to_string(size);
            const std::string begin =
                size < 132
                    ? "Error reading file: critical: the profile ends after " + told + " bytes, within its header"
                    : "Error reading file: critical: the profile ends after " + told + " of the " +
                          std::to_string(good.size()) + " bytes that its header tells";
            ICCProfileReader reader;
            const Failure failure = failureOf([&] { reader.readProfile(good.substr(0, size), "test.icc"); });
            ASSERT_EQ(failure.id, 0x3080007u) << size;
            ASSERT_EQ(failure.message.substr(0, begin.size()), begin);
            ASSERT_EQ(reader.getTransform(), nullptr);
        }
    }
}

TEST(ICCProfileReader, numbersOfTheStructureMayBeAnything)
{
    constexpr uint32_t extremes[] = {0,          1,          2,          3,          7,
                                     0xffff,     0x10000,    0x7ffffffe, 0x7fffffff, 0x80000000,
                                     0x80000001, 0xfffffff4, 0xfffffffc, 0xfffffffe, 0xffffffff};
    const std::string good = Icc::display({0, 9, 99, 999}).bytes();
    const auto expectAll = [&](std::size_t at, ErrorId id, std::size_t firstOf) {
        for (std::size_t i = firstOf; i < std::size(extremes); ++i)
            EXPECT_EQ(idOfRead(Icc::withU32(good, at, extremes[i])), id) << at << ": " << extremes[i];
    };
    expectAll(0, 0x3080007, 0);   // the size
    expectAll(36, 0x3080007, 0);  // the signature
    expectAll(128, 0x3080007, 4); // the number of tags; fewer of them lack some
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(idOfRead(Icc::withU32(good, 128, extremes[i])), 0x3080004u);
    for (std::size_t tag = 0; tag < 6; ++tag) {
        expectAll(132 + 12 * tag, 0x3080004, 0);     // the signature of a tag
        expectAll(132 + 12 * tag + 4, 0x3080007, 0); // where it lies
        expectAll(132 + 12 * tag + 8, 0x3080007, 0); // how large it is
    }
    for (std::size_t tag = 3; tag < 6; ++tag)
        expectAll(204 + 60 + 20 * (tag - 3) + 8, 0x3080006, 0); // the number of entries
}

TEST(ICCProfileReader, anyByteMayBeReplaced)
{
    const std::string good = Icc::display({0, 9, 99, 999}).bytes();
    const char nasty[] = {'\0', '\1', ' ', '\x7f', '\x80', '\xff'};
    std::size_t survivors = 0;
    for (std::size_t i = 0; i < good.size(); i += MORVANE_SAMPLE_STEP) {
        for (const char c : nasty) {
            std::string bytes = good;
            bytes[i] = c;
            survivors += idOfRead(bytes) == 0 ? 1U : 0U;
        }
    }
    // Much of a header means nothing to a matrix; all numbers of colorants and curves are legal.
    EXPECT_GT(survivors, 0u);
    EXPECT_LT(survivors, good.size() * std::size(nasty) / MORVANE_SAMPLE_STEP);
}
