#include "xml/gammaParamsElt.h"

#include "tests/xml/ctf.h"

using namespace Color;

namespace {

/// A document with a Gamma of this style, its content on line 3.
std::string document(const std::string& style, const std::string& content, const std::string& version = "1.6")
{
    return Ctf::document(Ctf::op("Gamma", content, " style='" + style + "'"), version);
}

GammaOp::Params paramsOf(const ColorTransformPtr& transform, std::size_t channel)
{
    return Ctf::getOp<GammaOp>(transform).getParams(channel);
}

} // namespace

TEST(GammaParamsElt, withoutChannelIsForRedGreenAndBlue)
{
    for (const char* version : {"1.2", "1.4", "1.5"}) {
        const auto basic =
            Ctf::read(document("basicFwd", "<GammaParams GAMMA=' 2.2' other='x'>text</GammaParams>", version));
        const auto moncurve = Ctf::read(document("moncurveRev", "<gammaparams offset='.055' gamma='24e-1'/>", version));
        for (std::size_t channel = 0; channel < 3; ++channel) {
            EXPECT_EQ(paramsOf(basic, channel), GammaOp::Params{2.2});
            EXPECT_EQ(paramsOf(moncurve, channel), (GammaOp::Params{2.4, 0.055}));
        }
        EXPECT_EQ(paramsOf(basic, 3), GammaOp::Params{1});
        EXPECT_EQ(paramsOf(moncurve, 3), (GammaOp::Params{1, 0}));
    }
}

TEST(GammaParamsElt, channelIsMatchedInAnyCase)
{
    const auto transform =
        Ctf::read(document("basicRev",
                           "<GammaParams channel='b' gamma='3'/><GammaParams gamma='1.5' channel='R'/>"
                           "<GammaParams Channel='g' gamma='2'/>",
                           "1.4"));
    EXPECT_EQ(paramsOf(transform, 0), GammaOp::Params{1.5});
    EXPECT_EQ(paramsOf(transform, 1), GammaOp::Params{2});
    EXPECT_EQ(paramsOf(transform, 2), GammaOp::Params{3});
}

TEST(GammaParamsElt, laterParametersReplaceEarlierOnes)
{
    const auto transform = Ctf::read(document("basicFwd", "<GammaParams channel='R' gamma='3'/><GammaParams gamma='2'/>"
                                                          "<GammaParams channel='B' gamma='4'/>"));
    EXPECT_EQ(paramsOf(transform, 0), GammaOp::Params{2});
    EXPECT_EQ(paramsOf(transform, 2), GammaOp::Params{4});
}

TEST(GammaParamsElt, refusesAnUnknownChannel)
{
    for (const std::string channel : {"", "X", "RGB", " R", "0"}) {
        for (const char* version : {"1.3", "1.6"}) {
            Ctf::expectReadFails(document("basicFwd", "<GammaParams channel='" + channel + "' gamma='2'/>", version),
                                 0x3020013, "Illegal 'Gamma' channel attribute '" + channel + "' line 3: test.ctf");
        }
    }
}

TEST(GammaParamsElt, alphaIsNoChannelUpToVersion_1_4)
{
    for (const char* version : {"", "1.2", "1.3", "1.35", "1.4"}) {
        for (const std::string channel : {"A", "a"}) {
            Ctf::expectReadFails(document("basicFwd", "<GammaParams channel='" + channel + "' gamma='2'/>", version),
                                 0x3020013, "Illegal 'Gamma' channel attribute '" + channel + "' line 3: test.ctf");
        }
    }
}

TEST(GammaParamsElt_1_5, alphaIsAChannel)
{
    for (const char* version : {"1.40001", "1.5", "1.6"}) {
        const auto transform =
            Ctf::read(document("moncurveFwd", "<GammaParams channel='a' gamma='2' offset='0.5'/>", version));
        EXPECT_EQ(paramsOf(transform, 0), (GammaOp::Params{1, 0}));
        EXPECT_EQ(paramsOf(transform, 3), (GammaOp::Params{2, 0.5}));
    }
}

TEST(GammaParamsElt, basicStylesRequireGammaAndAllowNoOffset)
{
    for (const std::string style : {"basicFwd", "basicRev"}) {
        const std::string required = "Param 'gamma' required for style '" + style + "', 'Gamma' line 3: test.ctf";
        Ctf::expectReadFails(document(style, "<GammaParams/>"), 0x3020014, required);
        Ctf::expectReadFails(document(style, "<GammaParams channel='R' offset='0'/>"), 0x3020014, required);
        Ctf::expectReadFails(document(style, "<GammaParams gamma='2' offset='0'/>"), 0x3020015,
                             "Param 'offset' not allowed in style '" + style + "', 'Gamma' line 3: test.ctf");
    }
}

TEST(GammaParamsElt, moncurveStylesRequireBoth)
{
    // The style is told as messages spell it, whatever its case in the file.
    for (const std::string style : {"moncurveFwd", "moncurveRev"}) {
        const std::string end = "' required for style '" + style + "', 'Gamma' line 3: test.ctf";
        Ctf::expectReadFails(document(style, "<GammaParams/>"), 0x3020014, "Param 'gamma" + end);
        Ctf::expectReadFails(document(style, "<GammaParams offset='0.1'/>"), 0x3020014, "Param 'gamma" + end);
        Ctf::expectReadFails(document(style, "<GammaParams gamma='2'/>"), 0x3020014, "Param 'offset" + end);
    }
    Ctf::expectReadFails(document("MONCURVEREV", "<GammaParams gamma='2'/>"), 0x3020014,
                         "Param 'offset' required for style 'moncurveRev', 'Gamma' line 3: test.ctf");
}

TEST(GammaParamsElt, refusesWhatIsNoNumber)
{
    for (const std::string text : {"", "two", "nan", "--2"}) {
        Ctf::expectReadFails(document("basicFwd", "<GammaParams gamma='" + text + "'/>"), 0x3020008,
                             "Characters '" + text + "' illegal");
        Ctf::expectReadFails(document("moncurveFwd", "<GammaParams gamma='2' offset='" + text + "'/>"), 0x3020008,
                             "Characters '" + text + "' illegal");
    }
}
