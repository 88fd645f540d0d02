#include "tests/pixels/rendering.h"

namespace PixelTest {

using namespace Morvane_2015_1_42;

void apply(const TransformPtr& transform, const Image& source, Image& destination)
{
    const MorvaneStatus status =
        transform->apply(source.data(), source.stride(), source.roi(), destination.data(), destination.stride());
    EXPECT_TRUE(status) << status.getErrorMessage();
}

void apply(const Twin::Processor& processor, const Image& source, Image& destination)
{
    for (unsigned y = 0; y < source.roi().getActiveHeight(); ++y)
        processor.apply(source.line(y), destination.line(y), source.roi().getActiveWidth(),
                        {source.roi().getX(), source.roi().getY() + y});
}

std::string differenceFromTwin(Twin::Processors& twins, const TransformPtr& transform, const Image& source,
                               PixelFormat out, Placing destinationPlacing)
{
    const Image before = source;
    Image expected(out, source.roi(), destinationPlacing);
    Image actual = expected;
    const Twin::Processor twin = twins.between(source.format(), out);
    apply(twin, source, expected);
    apply(finalizedCopy(transform, source.format(), out), source, actual);
    if (source.bytes() != before.bytes()) return "the source was changed";
    return difference(expected, actual, twin.nans());
}

void Differences::add(const std::string& context, const std::string& difference)
{
    if (difference.empty()) return;
    if (++m_count <= 5) m_first += context + ": " + difference + '\n';
}

testing::AssertionResult Differences::areNone() const
{
    if (m_count == 0) return testing::AssertionSuccess();
    return testing::AssertionFailure() << m_count << " differences, the first of them:\n" << m_first;
}

} // namespace PixelTest
