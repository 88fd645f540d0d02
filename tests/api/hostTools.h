#pragma once

#include "morvane/morvane.h"

#include <array>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <vector>

/// Small things that the tests of the exported interface share.

/// Passes for a status of success without a message.
::testing::AssertionResult succeeds(Morvane::MorvaneStatus status);

/// Passes for a status of exactly this code and message. "<id>" in the message stands for any UUID.
::testing::AssertionResult failsWith(Morvane::MorvaneStatus status, Morvane::ErrorId code, const std::string& message);

/// Hexadecimal digits in groups of 8, 4, 4, 4 and 12, joined by hyphens.
bool isUuid(const std::string& text);

/// Checks that a transform has an id, these depths, and nothing else that a host could have told.
void expectFresh(const Morvane::TransformPtr& transform, Morvane::BitDepth in, Morvane::BitDepth out);

/// A 32f transform with these factors for red, green, blue and alpha, and the offsets, none by default.
Morvane::TransformPtr makeScale(std::array<float, 4> factors, std::array<float, 4> offsets = {});

/// A transform read from the text of a ctf document.
Morvane::TransformPtr fromText(const std::string& text);

/// A ctf document of version 1.3 with the id "a" and these children.
std::string document(const std::string& children, const std::string& attributes = "");

/// Finalizes for the CPU alone with the default flags, and keeps dynamic operators.
Morvane::MorvaneStatus finalizeForCPU(const Morvane::TransformPtr& transform, Morvane::PixelFormat in,
                                      Morvane::PixelFormat out);

/// The result of one pixel of four samples through the transform, finalized here for the two formats.
template <class Out, class In>
std::array<Out, 4> convertPixel(const Morvane::TransformPtr& transform, Morvane::PixelFormat in,
                                Morvane::PixelFormat out, std::array<In, 4> pixel)
{
    std::array<Out, 4> result{};
    EXPECT_TRUE(succeeds(finalizeForCPU(transform, in, out)));
    EXPECT_TRUE(succeeds(transform->apply(pixel.data(), Morvane::ROI(0, 0, 1, 1), result.data())));
    return result;
}

/// The result of one PF_RGBA_32f pixel through a transform that is finalized for that format on both sides.
std::array<float, 4> applyToPixel(const Morvane::TransformPtr& transform, std::array<float, 4> pixel);

/// Sets a variable of the environment and restores it on destruction.
class ScopedEnvironment
{
public:
    ScopedEnvironment(const char* name, const char* value);
    ScopedEnvironment(const ScopedEnvironment&) = delete;
    ScopedEnvironment& operator=(const ScopedEnvironment&) = delete;
    ~ScopedEnvironment();

private:
    std::string m_name;
    std::optional<std::string> m_former;
};

/// A host's adaptor; tells a flag when it is destroyed.
class TestAdaptor : public Morvane::GPUAdaptor
{
public:
    explicit TestAdaptor(bool* destroyed = nullptr) : m_destroyed(destroyed) {}
    TestAdaptor(const TestAdaptor&) = delete;
    TestAdaptor& operator=(const TestAdaptor&) = delete;
    ~TestAdaptor() override
    {
        if (m_destroyed) *m_destroyed = true;
    }

private:
    bool* m_destroyed;
};
