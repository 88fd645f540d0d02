#include "tests/api/hostTools.h"

#include <cstring>
#include <thread>

using namespace Morvane;

namespace {

/// Two descriptions, both descriptors, one matrix and one range, which has no inverse.
const std::string kRange = "<Range inBitDepth=\"32f\" outBitDepth=\"32f\">"
                           "<minInValue>0</minInValue><minOutValue>0</minOutValue></Range>";
const std::string kMatrix = "<Matrix inBitDepth=\"8i\" outBitDepth=\"32f\">"
                            "<Array dim=\"3 3 3\">2 0 0 0 4 0 0 0 8</Array></Matrix>";

TransformPtr makeDescribed()
{
    return fromText(document("<Description>first</Description><Description>second</Description>"
                             "<InputDescriptor>in</InputDescriptor><OutputDescriptor>out</OutputDescriptor>" +
                                 kMatrix,
                             "name=\"n\""));
}

/// True when the call throws something that is not of the standard library.
template <class Call>
bool throwsUnnamed(Call call)
{
    try {
        call();
    } catch (const std::exception&) {
        return false;
    } catch (...) {
        return true;
    }
    return false;
}

/// A transform that a host derives itself, for what the library does when it meets one.
class ForeignTransform : public Transform
{
public:
    TransformPtr clone() const override { return TransformPtr(new ForeignTransform(*this)); }
    const char* getId() const override { return ""; }
    MorvaneStatus setId(const char*) override { return MorvaneStatus(); }
    const char* getUniqueId() const override { return ""; }
    MorvaneStatus setUniqueId(const char*) override { return MorvaneStatus(); }
    const char* getName() const override { return ""; }
    void setName(const char*) override {}
    const char* getDescription() const override { return ""; }
    void setDescription(const char*) override {}
    const char* getInputDescriptor() const override { return ""; }
    void setInputDescriptor(const char*) override {}
    const char* getOutputDescriptor() const override { return ""; }
    void setOutputDescriptor(const char*) override {}
    BitDepth getInputBitDepth() const override { return BIT_DEPTH_UNKNOWN; }
    BitDepth getOutputBitDepth() const override { return BIT_DEPTH_UNKNOWN; }
    PixelFormat getInputPixelFormat() const override { return PF_UNKNOWN; }
    MorvaneStatus setInputPixelFormat(PixelFormat) override { return MorvaneStatus(); }
    PixelFormat getOutputPixelFormat() const override { return PF_UNKNOWN; }
    MorvaneStatus setOutputPixelFormat(PixelFormat) override { return MorvaneStatus(); }
    MorvaneStatus setPixelFormats(PixelFormat, PixelFormat) override { return MorvaneStatus(); }
    MorvaneStatus inverse(TransformPtr&) const override { return MorvaneStatus(); }
    bool isInverseOf(const TransformPtr&) const override { return false; }
    bool hasReferences() const override { return false; }
    bool hasUnresolvedReferences() const override { return false; }
    MorvaneStatus describe(ContentCallbacks&) const override { return MorvaneStatus(); }
    MorvaneStatus setDynamicProperty(const DynamicProperty&) override { return MorvaneStatus(); }
    MorvaneStatus getDynamicProperty(DynamicProperty&) const override { return MorvaneStatus(); }
    void setGPUAdaptor(const GPUAdaptorPtr&) override {}
    GPUAdaptorPtr getGPUAdaptor() const override { return GPUAdaptorPtr(); }
    MorvaneStatus apply(const void*, unsigned, const ROI&, void*, unsigned) override { return MorvaneStatus(); }
    MorvaneStatus apply(const void*, const ROI&, void*) override { return MorvaneStatus(); }
    MorvaneStatus applyGPU(unsigned, const void*, const void*) override { return MorvaneStatus(); }
};

} // namespace

TEST(transform, idIsSetAndRefusedWhenEmpty)
{
    const TransformPtr transform = makeDescribed();
    EXPECT_STREQ(transform->getId(), "a");
    EXPECT_TRUE(succeeds(transform->setId("my id")));
    EXPECT_STREQ(transform->getId(), "my id");
    EXPECT_TRUE(failsWith(transform->setId(""), 0x2010010, "Transform ID cannot be empty"));
    EXPECT_TRUE(failsWith(transform->setId(nullptr), 0x2010010, "Transform ID cannot be empty"));
    EXPECT_STREQ(transform->getId(), "my id");
}

TEST(transform, uniqueIdKeepsIdentifierCharactersAlone)
{
    const TransformPtr transform = makeDescribed();
    EXPECT_STREQ(transform->getUniqueId(), "a");
    EXPECT_TRUE(succeeds(transform->setUniqueId("my-id 7_x")));
    EXPECT_STREQ(transform->getUniqueId(), "myid7_x");
    EXPECT_TRUE(failsWith(transform->setUniqueId(""), 0x2010015, "Transform unique ID cannot be empty"));
    EXPECT_TRUE(failsWith(transform->setUniqueId(nullptr), 0x2010015, "Transform unique ID cannot be empty"));
    EXPECT_TRUE(failsWith(transform->setUniqueId("-- !"), 0x1010006, "Name is not allowed: -- !."));
    EXPECT_STREQ(transform->getUniqueId(), "myid7_x");
}

TEST(transform, namesAndDescriptorsAreSetAndNullCountsAsEmpty)
{
    const TransformPtr transform = makeDescribed();
    EXPECT_STREQ(transform->getName(), "n");
    EXPECT_STREQ(transform->getInputDescriptor(), "in");
    EXPECT_STREQ(transform->getOutputDescriptor(), "out");
    transform->setName("other");
    transform->setInputDescriptor("i");
    transform->setOutputDescriptor("o");
    EXPECT_STREQ(transform->getName(), "other");
    EXPECT_STREQ(transform->getInputDescriptor(), "i");
    EXPECT_STREQ(transform->getOutputDescriptor(), "o");
    transform->setName(nullptr);
    transform->setInputDescriptor(nullptr);
    transform->setOutputDescriptor(nullptr);
    EXPECT_STREQ(transform->getName(), "");
    EXPECT_STREQ(transform->getInputDescriptor(), "");
    EXPECT_STREQ(transform->getOutputDescriptor(), "");
}

TEST(transform, setterTakesItsOwnText)
{
    const TransformPtr transform = makeDescribed();
    transform->setName(transform->getName());
    transform->setDescription(transform->getDescription());
    EXPECT_STREQ(transform->getName(), "n");
    EXPECT_STREQ(transform->getDescription(), "first\nsecond");
}

TEST(transform, descriptionJoinsAllAndSetterReplacesThem)
{
    const TransformPtr transform = makeDescribed();
    EXPECT_STREQ(transform->getDescription(), "first\nsecond");
    transform->setDescription("only");
    EXPECT_STREQ(transform->getDescription(), "only");
    transform->setDescription(nullptr);
    EXPECT_STREQ(transform->getDescription(), "");
    EXPECT_STREQ(makeScale({1, 1, 1, 1})->getDescription(), "");
}

TEST(transform, descriptionBufferBelongsToTheThread)
{
    const TransformPtr first = makeDescribed();
    const TransformPtr second = makeDescribed();
    second->setDescription("other");
    const char* text = first->getDescription();
    std::thread([&] { EXPECT_STREQ(second->getDescription(), "other"); }).join();
    EXPECT_STREQ(text, "first\nsecond");
    EXPECT_STREQ(second->getDescription(), "other");
    EXPECT_STREQ(first->getDescription(), "first\nsecond");
}

TEST(transform, bitDepthsAreThoseOfTheEnds)
{
    const TransformPtr transform = makeDescribed();
    EXPECT_EQ(transform->getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(transform->getOutputBitDepth(), BIT_DEPTH_32f);
}

TEST(transform, bitDepthsOfAnEmptyTransformThrow)
{
    const TransformPtr transform = fromText(document(""));
    EXPECT_TRUE(throwsUnnamed([&] { transform->getInputBitDepth(); }));
    EXPECT_TRUE(throwsUnnamed([&] { transform->getOutputBitDepth(); }));
}

TEST(transform, cloneIsIndependentAndNotFinalized)
{
    const TransformPtr transform = makeDescribed();
    transform->setGPUAdaptor(GPUAdaptorPtr(new TestAdaptor));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_8i, PF_RGBA_32f)));
    const TransformPtr clone = transform->clone();
    ASSERT_TRUE(clone);
    EXPECT_NE(clone.get(), transform.get());
    EXPECT_EQ(clone.getUseCount(), 1);
    EXPECT_STREQ(clone->getId(), "a");
    EXPECT_STREQ(clone->getUniqueId(), "a");
    EXPECT_STREQ(clone->getName(), "n");
    EXPECT_STREQ(clone->getDescription(), "first\nsecond");
    EXPECT_STREQ(clone->getInputDescriptor(), "in");
    EXPECT_STREQ(clone->getOutputDescriptor(), "out");
    EXPECT_EQ(clone->getInputBitDepth(), BIT_DEPTH_8i);
    EXPECT_EQ(clone->getInputPixelFormat(), PF_UNKNOWN);
    EXPECT_EQ(clone->getOutputPixelFormat(), PF_UNKNOWN);
    const unsigned char source[4] = {1, 1, 1, 1};
    float destination[4] = {};
    EXPECT_TRUE(
        failsWith(clone->apply(source, ROI(0, 0, 1, 1), destination), 0x6010001, "No 'CPU' renderer available"));
    clone->setName("changed");
    ASSERT_TRUE(succeeds(clone->setId("b")));
    EXPECT_STREQ(transform->getName(), "n");
    EXPECT_STREQ(transform->getId(), "a");
    EXPECT_TRUE(succeeds(transform->apply(source, ROI(0, 0, 1, 1), destination)));
    EXPECT_EQ(destination[2], 8.f);
}

TEST(transform, inverseUndoesAndExchangesTheEnds)
{
    const TransformPtr transform = makeDescribed();
    TransformPtr inverse;
    ASSERT_TRUE(succeeds(transform->inverse(inverse)));
    EXPECT_STREQ(inverse->getName(), "Inverse of: [n]");
    EXPECT_STREQ(inverse->getDescription(), "Inverse of: [first]\nsecond");
    EXPECT_STREQ(inverse->getInputDescriptor(), "out");
    EXPECT_STREQ(inverse->getOutputDescriptor(), "in");
    EXPECT_EQ(inverse->getInputBitDepth(), BIT_DEPTH_32f);
    EXPECT_EQ(inverse->getOutputBitDepth(), BIT_DEPTH_8i);
    EXPECT_TRUE(inverse->isInverseOf(transform));
    EXPECT_FALSE(transform->isInverseOf(transform));
    EXPECT_FALSE(inverse->isInverseOf(makeScale({1, 1, 1, 1})));
    EXPECT_FALSE(inverse->isInverseOf(TransformPtr()));
    EXPECT_FALSE(inverse->isInverseOf(TransformPtr(new ForeignTransform)));

    ASSERT_TRUE(succeeds(finalizeForCPU(inverse, PF_RGBA_32f, PF_RGBA_8i)));
    const float source[4] = {20, 40, 80, 1};
    unsigned char destination[4] = {};
    ASSERT_TRUE(succeeds(inverse->apply(source, ROI(0, 0, 1, 1), destination)));
    EXPECT_EQ(destination[0], 10);
    EXPECT_EQ(destination[1], 10);
    EXPECT_EQ(destination[2], 10);
    EXPECT_EQ(destination[3], 255);
}

TEST(transform, inverseMayReplaceTheOnlyHandle)
{
    TransformPtr transform = makeDescribed();
    ASSERT_TRUE(succeeds(transform->inverse(transform)));
    EXPECT_STREQ(transform->getName(), "Inverse of: [n]");
    EXPECT_EQ(transform.getUseCount(), 1);
}

TEST(transform, inverseFailsWhereAnOpHasNone)
{
    const TransformPtr transform = fromText(document(kRange));
    const TransformPtr before = makeScale({1, 1, 1, 1});
    TransformPtr result = before;
    EXPECT_TRUE(failsWith(transform->inverse(result), 0x2010014, "Range inverse not supported"));
    EXPECT_EQ(result.get(), before.get());
}

TEST(transform, inverseOfAnEmptyTransformFails)
{
    TransformPtr result;
    EXPECT_TRUE(failsWith(fromText(document(""))->inverse(result), 0x2010008, "Empty transform"));
    EXPECT_FALSE(result);
}

TEST(transform, hasNoReferences)
{
    const TransformPtr transform = makeDescribed();
    EXPECT_FALSE(transform->hasReferences());
    EXPECT_FALSE(transform->hasUnresolvedReferences());
}

TEST(transform, missingDynamicPropertyIsReported)
{
    const TransformPtr transform = makeDescribed();
    DynamicProperty exposure(DynamicProperty::EXPOSURE);
    exposure.setValue(3);
    EXPECT_TRUE(
        failsWith(transform->setDynamicProperty(exposure), 0x2010013, "Dynamic property Exposure not available in "));
    EXPECT_TRUE(
        failsWith(transform->getDynamicProperty(exposure), 0x2010013, "Dynamic property Exposure not available in "));
    EXPECT_EQ(exposure.getValue(), 3.0);
}

TEST(transform, dynamicBypassTakesEffectWithoutFinalizing)
{
    const TransformPtr transform =
        fromText(document("<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\"><DynamicParameter param=\"LOOK_SWITCH\"/>"
                          "<Array dim=\"3 3 3\">2 0 0 0 2 0 0 0 2</Array></Matrix>"));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_EQ(applyToPixel(transform, {1, 2, 3, 4}), (std::array<float, 4>{2, 4, 6, 4}));
    DynamicProperty bypass(DynamicProperty::BYPASS);
    bypass.setValue(1);
    ASSERT_TRUE(succeeds(transform->setDynamicProperty(bypass)));
    EXPECT_EQ(applyToPixel(transform, {1, 2, 3, 4}), (std::array<float, 4>{1, 2, 3, 4}));
    DynamicProperty found(DynamicProperty::BYPASS);
    ASSERT_TRUE(succeeds(transform->getDynamicProperty(found)));
    EXPECT_EQ(found.getValue(), 1.0);
}

TEST(transform, keepsItsAdaptorAndDropsRenderersForANewOne)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    EXPECT_FALSE(transform->getGPUAdaptor());
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    const GPUAdaptorPtr adaptor(new TestAdaptor);
    transform->setGPUAdaptor(adaptor);
    EXPECT_EQ(transform->getGPUAdaptor().get(), adaptor.get());
    EXPECT_EQ(adaptor.getUseCount(), 2);
    float pixel[4] = {};
    EXPECT_TRUE(failsWith(transform->apply(pixel, ROI(0, 0, 1, 1), pixel), 0x6010001, "No 'CPU' renderer available"));
    transform->setGPUAdaptor(GPUAdaptorPtr());
    EXPECT_FALSE(transform->getGPUAdaptor());
    EXPECT_EQ(adaptor.getUseCount(), 1);
}

TEST(transform, applyGPUFailsWithoutARenderer)
{
    const TransformPtr transform = makeScale({2, 2, 2, 1});
    EXPECT_TRUE(failsWith(transform->applyGPU(0, nullptr, nullptr), 0x6010001, "No 'GPU' renderer available"));
    ASSERT_TRUE(succeeds(finalizeForCPU(transform, PF_RGBA_32f, PF_RGBA_32f)));
    EXPECT_TRUE(failsWith(transform->applyGPU(0, nullptr, nullptr), 0x6010001, "No 'GPU' renderer available"));
}

TEST(transform, oneThatTheHostMadeItselfCountsAsNone)
{
    const TransformPtr foreign(new ForeignTransform);
    TransformPtr result;
    EXPECT_TRUE(failsWith(
        finalize(foreign, PF_RGBA_32f, PF_RGBA_32f, RENDERER_CPU, OPTIMIZER_DEFAULT, RESOLVE_BROADCAST_MONITOR, result),
        0x4010002, "Transform null"));
    EXPECT_TRUE(failsWith(concatenateTransforms(foreign, makeScale({1, 1, 1, 1}), result), 0x204000f,
                          "Transform was NULL when attempting to concatenate"));
    EXPECT_FALSE(result);
}
