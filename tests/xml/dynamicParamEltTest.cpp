#include "tests/xml/ctf.h"
#include "transform/exposureContrastOp.h"

using namespace Color;

TEST(DynamicParamElt, lookSwitchMakesTheBypassOfAnyOpDynamic)
{
    for (const char* param : {"LOOK_SWITCH", "look_switch"}) {
        const std::string element =
            std::string("<DynamicParameter PARAM='") + param + "' other='1'>text</DynamicParameter>";
        const auto transform = Ctf::read(Ctf::document(Ctf::matrix(element) + Ctf::range(element, " bypass='true'")));
        const auto& matrix = transform->getOpList().get(0)->getBypass();
        const auto& range = transform->getOpList().get(1)->getBypass();
        EXPECT_TRUE(matrix->isDynamic());
        EXPECT_FALSE(matrix->get());
        EXPECT_TRUE(range->isDynamic());
        EXPECT_TRUE(range->get());
    }
}

TEST(DynamicParamElt, exposureAndContrastBecomeDynamicEachByItself)
{
    const auto read = [](const std::string& params) {
        return Ctf::read(Ctf::document(Ctf::op("ExposureContrast", params, " style='video'")));
    };
    for (const char* param : {"EXPOSURE", "Exposure"}) {
        const auto transform = read(std::string("<DynamicParameter param='") + param + "'/>");
        const auto& op = Ctf::getOp<ExposureContrastOp>(transform);
        EXPECT_TRUE(op.getExposure()->isDynamic());
        EXPECT_FALSE(op.getContrast()->isDynamic());
        EXPECT_FALSE(op.getBypass()->isDynamic());
    }
    for (const char* param : {"CONTRAST", "contrast"}) {
        const auto transform = read(std::string("<DynamicParameter param='") + param + "'/>");
        const auto& op = Ctf::getOp<ExposureContrastOp>(transform);
        EXPECT_FALSE(op.getExposure()->isDynamic());
        EXPECT_TRUE(op.getContrast()->isDynamic());
        EXPECT_FALSE(op.getBypass()->isDynamic());
    }
    const auto transform = read("<DynamicParameter param='LOOK_SWITCH'/><DynamicParameter param='CONTRAST'/>"
                                "<DynamicParameter param='EXPOSURE'/>");
    const auto& op = Ctf::getOp<ExposureContrastOp>(transform);
    EXPECT_TRUE(op.getExposure()->isDynamic());
    EXPECT_TRUE(op.getContrast()->isDynamic());
    EXPECT_TRUE(op.getBypass()->isDynamic());
}

TEST(DynamicParamElt, withoutParamDoesNothing)
{
    const auto transform = Ctf::read(Ctf::document(Ctf::matrix("<DynamicParameter value='LOOK_SWITCH'/>")));
    EXPECT_FALSE(transform->getOpList().get(0)->getBypass()->isDynamic());
}

TEST(DynamicParamElt, refusesAnyOtherParam)
{
    for (const char* param : {"EXPOSURE", "contrast", "GAMMA", "", " LOOK_SWITCH"}) {
        Ctf::expectReadFails(Ctf::document(Ctf::matrix(std::string("<DynamicParameter param='") + param + "'/>")),
                             0x3020019, std::string("Invalid dynamic parameter '") + param + "' for op 'Matrix'");
    }
}

TEST(DynamicParamElt, refusesAnyOtherParamOfExposureContrast)
{
    for (const std::string param : {"PIVOT", "", "EXPOSURE "}) {
        Ctf::expectReadFails(
            Ctf::document(Ctf::op("ExposureContrast", "<DynamicParameter param='" + param + "'/>", " style='log'")),
            0x3020019, "Invalid dynamic parameter '" + param + "' for op 'Exposure/Contrast'");
    }
}

TEST(DynamicParamElt, exposureBelongsToNoOtherOp)
{
    Ctf::expectReadFails(
        Ctf::document(Ctf::op("ASC_CDL", "<DynamicParameter param='EXPOSURE'/>", " style='noClampFwd'")), 0x3020019,
        "Invalid dynamic parameter 'EXPOSURE' for op 'ASC CDL'");
}
