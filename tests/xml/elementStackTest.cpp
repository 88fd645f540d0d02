#include "xml/elementStack.h"

#include "tests/utils/failure.h"
#include "xml/dummyElt.h"
#include "xml/matrixElt.h"
#include "xml/transformElt.h"

#include <gtest/gtest.h>

using namespace Color;
using namespace Color::Xml::Reader;

TEST(ElementStack, topIsTheLastPushed)
{
    ReadContext context;
    ElementStack& stack = context.stack;
    EXPECT_TRUE(stack.isEmpty());
    EXPECT_EQ(stack.getTop(), nullptr);
    stack.push(std::make_unique<TransformElt>("a", context));
    stack.push(std::make_unique<DummyElt>("b", stack.getTop(), context, ""));
    EXPECT_EQ(stack.getSize(), 2u);
    EXPECT_EQ(stack.getTop()->getName(), "b");
    EXPECT_EQ(stack.pop()->getName(), "b");
    EXPECT_EQ(stack.getTop()->getName(), "a");
    stack.clear();
    EXPECT_TRUE(stack.isEmpty());
}

TEST(ElementStack, tracesFromTheTop)
{
    ReadContext context;
    EXPECT_EQ(context.stack.getTrace(), "XML stack is ");

    const char* const transformAttributes[] = {"id", "t1", nullptr};
    context.line = 2;
    auto transform = std::make_unique<TransformElt>("ProcessList", context);
    TransformElt& parent = *transform;
    context.stack.push(std::move(transform)).start(transformAttributes);

    const char* const opAttributes[] = {"id", "m1", "inBitDepth", "8i", "outBitDepth", "8i", nullptr};
    context.line = 4;
    context.stack.push(std::make_unique<MatrixElt>("Matrix", parent, context)).start(opAttributes);
    context.line = 5;
    context.stack.push(std::make_unique<DummyElt>("Foo", context.stack.getTop(), context, ""));
    EXPECT_EQ(context.stack.getTop()->getStackTrace(),
              "XML stack is [Foo at line=5] [Matrix=m1 at line=4] [ProcessList=t1 at line=2] ");
}

TEST(ElementStack, refusesToGrowWithoutEnd)
{
    ReadContext context;
    context.fileName = "deep.ctf";
    context.line = 9;
    const auto push = [&] { context.stack.push(std::make_unique<DummyElt>("a", context.stack.getTop(), context, "")); };
    for (std::size_t i = 0; i < ElementStack::kMaxDepth; ++i)
        push();
    EXPECT_EQ(failureOf(push), (Failure{0x3020001, "COLOR:XML:READER",
                                        "XML Parsing error (Elements nested too deeply) line 9: deep.ctf"}));
    EXPECT_EQ(context.stack.getSize(), ElementStack::kMaxDepth);
}
