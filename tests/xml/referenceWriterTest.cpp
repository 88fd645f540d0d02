#include "tests/xml/written.h"

#include "transform/referenceOp.h"

#include <boost/make_shared.hpp>

using namespace Color;

TEST(ReferenceWriter, writesItsAlias)
{
    ReferenceOp op(BIT_DEPTH_8i, BIT_DEPTH_16f, "i", "n", {"d"});
    op.setAlias("currentMonitor");
    const std::string text = "<Reference id=\"i\" name=\"n\" inBitDepth=\"8i\" outBitDepth=\"16f\" "
                             "alias=\"currentMonitor\">\n   <Description>d</Description>\n</Reference>\n";
    Ctf::expectWritten(op, text);
    op.setResolveFlags(RESOLVE_GRAPHICS_MONITOR);
    Ctf::expectWritten(op, text);
}

TEST(ReferenceWriter, writesItsPathAndBase)
{
    const struct
    {
        BasePath basePath;
        const char* attribute;
    } rows[] = {
        {BASE_PATH_NONE, ""},
        {BASE_PATH_BRELWICK, " basePath=\"Brelwick\""},
        {BASE_PATH_SHARED, " basePath=\"Shared\""},
    };
    for (const auto& row : rows) {
        ReferenceOp op;
        op.setPath("looks/a&b.ctf", row.basePath);
        Ctf::expectWritten(op, std::string("<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" "
                                           "path=\"looks/a&amp;b.ctf\"") +
                                   row.attribute + ">\n</Reference>\n");
    }
}

TEST(ReferenceWriter, writesAReferenceThatIsResolvedAsAReference)
{
    ReferenceOp op;
    op.setPath("/a.ctf", BASE_PATH_NONE);
    OpList ops;
    ops.append(new MatrixOp);
    op.setResolved(ops, "/a.ctf");
    Ctf::expectWritten(op, "<Reference inBitDepth=\"32f\" outBitDepth=\"32f\" path=\"/a.ctf\">\n</Reference>\n");
}

TEST(ReferenceWriter, asksForTheLowestVersionWritten)
{
    const auto transform = boost::make_shared<Transform>("t", "", Descriptions(), "", "");
    auto* op = new ReferenceOp;
    op->setAlias("look");
    transform->getOpList().append(op);
    EXPECT_NE(Ctf::write(transform).find("<ProcessList version=\"1.3\" id=\"t\">"), std::string::npos);
}
