#include "tests/api/hostTools.h"

#include <cstdlib>
#include <regex>

namespace {

const std::regex kUuid("[0-9a-fA-F]{8}(-[0-9a-fA-F]{4}){3}-[0-9a-fA-F]{12}");

} // namespace

::testing::AssertionResult succeeds(Morvane::MorvaneStatus status)
{
    if (status && status.getErrorCode() == 0 && !status.getErrorMessage()) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << std::hex << "0x" << status.getErrorCode() << " \""
                                         << (status.getErrorMessage() ? status.getErrorMessage() : "") << "\"";
}

::testing::AssertionResult failsWith(Morvane::MorvaneStatus status, Morvane::ErrorId code, const std::string& message)
{
    const std::string found =
        std::regex_replace(status.getErrorMessage() ? status.getErrorMessage() : "", kUuid, "<id>");
    if (!status && status.getErrorCode() == code && found == message) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << std::hex << "0x" << status.getErrorCode() << " \"" << found << "\"";
}

bool isUuid(const std::string& text) { return std::regex_match(text, kUuid); }

void expectFresh(const Morvane::TransformPtr& transform, Morvane::BitDepth in, Morvane::BitDepth out)
{
    EXPECT_TRUE(isUuid(transform->getId()));
    EXPECT_STREQ(transform->getName(), "none");
    EXPECT_STREQ(transform->getDescription(), "");
    EXPECT_STREQ(transform->getInputDescriptor(), "");
    EXPECT_STREQ(transform->getOutputDescriptor(), "");
    EXPECT_EQ(transform->getInputBitDepth(), in);
    EXPECT_EQ(transform->getOutputBitDepth(), out);
}

Morvane::TransformPtr makeScale(std::array<float, 4> factors, std::array<float, 4> offsets)
{
    std::array<float, 16> matrix{};
    for (std::size_t i = 0; i < 4; ++i)
        matrix[5 * i] = factors[i];
    Morvane::TransformPtr transform;
    EXPECT_TRUE(succeeds(Morvane::CreateMatrixTransform(Morvane::BIT_DEPTH_32f, Morvane::BIT_DEPTH_32f, matrix.data(),
                                                        offsets.data(), true, transform)));
    return transform;
}

Morvane::TransformPtr fromText(const std::string& text)
{
    Morvane::TransformPtr transform;
    EXPECT_TRUE(succeeds(Morvane::loadColorTransformFromBuffer(text.c_str(), transform)));
    return transform;
}

std::string document(const std::string& children, const std::string& attributes)
{
    return "<ProcessList id=\"a\" version=\"1.3\" " + attributes + ">" + children + "</ProcessList>";
}

Morvane::MorvaneStatus finalizeForCPU(const Morvane::TransformPtr& transform, Morvane::PixelFormat in,
                                      Morvane::PixelFormat out)
{
    Morvane::TransformPtr result;
    return Morvane::finalize(transform, in, out, Morvane::RENDERER_CPU,
                             Morvane::OPTIMIZER_DEFAULT | Morvane::OPTIMIZER_KEEP_DYNAMIC,
                             Morvane::RESOLVE_BROADCAST_MONITOR, result);
}

std::array<float, 4> applyToPixel(const Morvane::TransformPtr& transform, std::array<float, 4> pixel)
{
    std::array<float, 4> result{};
    EXPECT_TRUE(succeeds(transform->apply(pixel.data(), Morvane::ROI(0, 0, 1, 1), result.data())));
    return result;
}

ScopedEnvironment::ScopedEnvironment(const char* name, const char* value) : m_name(name)
{
    if (const char* former = std::getenv(name)) m_former = former;
    ::setenv(name, value, 1);
}

ScopedEnvironment::~ScopedEnvironment()
{
    if (m_former) {
        ::setenv(m_name.c_str(), m_former->c_str(), 1);
    } else {
        ::unsetenv(m_name.c_str());
    }
}
