#include "tests/xml/ctf.h"

using namespace Color;

TEST(DescriptorElt, readsBothDescriptors)
{
    const auto transform = Ctf::read(Ctf::document("<InputDescriptor> in &amp; more </InputDescriptor>"
                                                   "<OutputDescriptor>out</OutputDescriptor>" +
                                                   Ctf::range("")));
    EXPECT_EQ(transform->getInputDescriptor(), "in & more");
    EXPECT_EQ(transform->getOutputDescriptor(), "out");
}

TEST(DescriptorElt, appendsLinesAndLaterElements)
{
    const auto transform = Ctf::read(Ctf::document("<InputDescriptor>a\n b</InputDescriptor>"
                                                   "<outputdescriptor>x</outputdescriptor>"
                                                   "<InputDescriptor>c</InputDescriptor>"
                                                   "<OutputDescriptor>y\nz</OutputDescriptor>" +
                                                   Ctf::range("")));
    EXPECT_EQ(transform->getInputDescriptor(), "abc");
    EXPECT_EQ(transform->getOutputDescriptor(), "xyz");
}
