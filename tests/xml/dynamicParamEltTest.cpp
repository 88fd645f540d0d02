#include "tests/xml/ctf.h"

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
