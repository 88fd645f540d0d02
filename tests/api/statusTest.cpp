#include "tests/api/hostTools.h"

#include <string>
#include <utility>
#include <vector>

using namespace Morvane;

namespace {

std::vector<std::pair<LogLevel, std::string>> loggedLines;

void collectLine(LogLevel level, const char* text) { loggedLines.emplace_back(level, text); }

/// Collects what the library logs while it lives.
class LogCollector
{
public:
    LogCollector()
    {
        loggedLines.clear();
        EXPECT_TRUE(succeeds(setLoggerFunction(collectLine)));
    }
    LogCollector(const LogCollector&) = delete;
    LogCollector& operator=(const LogCollector&) = delete;
    ~LogCollector() { EXPECT_TRUE(succeeds(setLoggerFunction(nullptr))); }
};

} // namespace

TEST(status, isSuccessWithoutMessageAtFirst)
{
    MorvaneStatus status;
    EXPECT_TRUE(status);
    EXPECT_EQ(status.getErrorCode(), 0u);
    EXPECT_EQ(status.getErrorMessage(), nullptr);
}

TEST(status, copiesOwnTheirMessages)
{
    MorvaneStatus first;
    first.setErrorCode(7);
    first.setErrorMessage("seven");
    MorvaneStatus copy(first);
    MorvaneStatus assigned;
    assigned = first;
    first.setErrorMessage("");
    EXPECT_EQ(first.getErrorMessage(), nullptr);
    EXPECT_TRUE(failsWith(copy, 7, "seven"));
    EXPECT_TRUE(failsWith(assigned, 7, "seven"));
}

TEST(status, loggerIsToldOfAFailureWithPlaceAndCategory)
{
    LogCollector collector;
    TransformPtr result;
    EXPECT_FALSE(concatenateTransforms(TransformPtr(), TransformPtr(), result));
    ASSERT_EQ(loggedLines.size(), 1u);
    EXPECT_EQ(loggedLines[0].first, LOG_LEVEL_DEBUG);
    const std::string& line = loggedLines[0].second;
    EXPECT_EQ(line.substr(0, line.find('(')), "transform\\transform");
    EXPECT_EQ(line.substr(line.find("): ")),
              "): COLOR:TRANSFORM:LUT_1D: Transform was NULL when attempting to concatenate");
}

TEST(status, failuresLogUnderTheCategoryOfTheirSubject)
{
    const TransformPtr transform = makeScale({1, 1, 1, 1});
    TransformPtr result;
    float pixel[4] = {};
    LogCollector collector;
    EXPECT_FALSE(transform->apply(pixel, ROI(0, 0, 1, 1), pixel));
    EXPECT_FALSE(transform->applyGPU(0, nullptr, nullptr));
    EXPECT_FALSE(finalize(TransformPtr(), PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT,
                          RESOLVE_BROADCAST_MONITOR, result));
    EXPECT_FALSE(loadColorTransform(nullptr, result));
    EXPECT_TRUE(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f));
    EXPECT_FALSE(transform->apply(nullptr, ROI(0, 0, 1, 1), pixel));
    EXPECT_FALSE(transform->apply(pixel, ROI(0, 0, 2, 1, 1, 1), pixel));
    std::vector<std::string> texts;
    texts.reserve(loggedLines.size());
    for (const auto& line : loggedLines)
        texts.push_back(line.second.substr(line.second.find("): ") + 3));
    EXPECT_EQ(texts, (std::vector<std::string>{
                         "COLOR:MORVANE:COLOR: No 'CPU' renderer available",
                         "COLOR:MORVANE:COLOR: No 'GPU' renderer available",
                         "COLOR:RENDERER:ALL: Transform null",
                         "COLOR:MORVANE:COLOR: NULL parameter: path",
                         "COLOR:RENDERER:ALL: Image null",
                         "COLOR:UTILS:ALL: Mismatch between 'active width' and '0' for ROI",
                     }));
}
