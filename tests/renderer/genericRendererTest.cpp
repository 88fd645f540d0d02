#include "renderer/genericRenderer.h"
#include "utils/exception.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

using namespace Rendering;

namespace {

constexpr const char* kCpuVariable = "MORVANE_CPU_RENDERER";
constexpr const char* kGpuVariable = "MORVANE_GPU_RENDERER";

class RendererSelection : public testing::Test
{
protected:
    void TearDown() override
    {
        unsetenv(kCpuVariable);
        unsetenv(kGpuVariable);
    }
};

template <class Call>
void expectRefusal(Call&& call, const std::string& message)
{
    try {
        call();
        FAIL() << "no exception";
    } catch (const Color::Exception& exception) {
        EXPECT_EQ(exception.getId(), 0x4010004u);
        EXPECT_EQ(exception.getMessage(), message);
        EXPECT_NE(exception.getLogMessage().find("COLOR:RENDERER:ALL: " + message), std::string::npos);
    }
}

} // namespace

TEST_F(RendererSelection, theCpuRequestGivesTheCpuRenderer)
{
    for (const int request : {0, 1}) {
        const auto renderer = createCPURenderer(request);
        ASSERT_TRUE(renderer);
        EXPECT_EQ(renderer->getType(), 1);
    }
}

TEST_F(RendererSelection, otherRequestsGiveNone)
{
    for (const int request : {-1, 5, 100}) {
        EXPECT_FALSE(createCPURenderer(request)) << request;
        EXPECT_FALSE(createGPURenderer(request)) << request;
    }
}

TEST_F(RendererSelection, theWrongKindIsRefused)
{
    expectRefusal([] { createCPURenderer(3); }, "A GPU renderer not a valid choice");
    expectRefusal([] { createCPURenderer(4); }, "A GPU renderer not a valid choice");
    expectRefusal([] { createGPURenderer(1); }, "A CPU renderer not a valid choice");
    expectRefusal([] { createGPURenderer(2); }, "A CPU renderer not a valid choice");
    expectRefusal([] { createGPURenderer(4); }, "A OCIO GPU renderer not a valid choice");
}

TEST_F(RendererSelection, theEnvironmentTakesThePlaceOfTheRequest)
{
    setenv(kCpuVariable, "GPU", 1);
    expectRefusal([] { createCPURenderer(1); }, "A GPU renderer not a valid choice");
    setenv(kCpuVariable, "OCIO_GPU", 1);
    expectRefusal([] { createCPURenderer(1); }, "A GPU renderer not a valid choice");
    setenv(kCpuVariable, "CPU", 1);
    EXPECT_TRUE(createCPURenderer(3));
    setenv(kGpuVariable, "CPU", 1);
    expectRefusal([] { createGPURenderer(3); }, "A CPU renderer not a valid choice");
    setenv(kGpuVariable, "OCIO_GPU", 1);
    expectRefusal([] { createGPURenderer(3); }, "A OCIO GPU renderer not a valid choice");
}

TEST_F(RendererSelection, aTextThatIsNoneOfTheFourLeavesTheRequest)
{
    for (const char* text : {"cpu", "", "GPU ", "gpu", "3"}) {
        setenv(kCpuVariable, text, 1);
        EXPECT_TRUE(createCPURenderer(1)) << text;
    }
}
