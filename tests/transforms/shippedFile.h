#pragma once

#include "tests/transforms/published.h"

#include "morvane/morvane.h"

#include <cstdint>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

/// A transform that ships, by its path below the directory of all, as text and as a host renders it.
class ShippedFile
{
public:
    explicit ShippedFile(const std::string& name) : m_path(std::string(MORVANE_TRANSFORMS) + "/" + name) {}

    /// The numbers of all Array elements of these dimensions.
    std::vector<std::vector<double>> arraysOf(const std::string& dimensions) const
    {
        std::ifstream file(m_path);
        const std::string text{std::istreambuf_iterator<char>(file), {}}, begin = "<Array dim=\"" + dimensions + "\">";
        std::vector<std::vector<double>> arrays;
        for (size_t at = text.find(begin); at != std::string::npos; at = text.find(begin, at + 1)) {
            const size_t first = at + begin.size();
            std::istringstream stream(text.substr(first, text.find("</Array>", first) - first));
            arrays.emplace_back(std::istream_iterator<double>(stream), std::istream_iterator<double>());
        }
        return arrays;
    }

    /// Expects that the columns of a matrix, the index-th of the file, are these.
    template <class ColumnOf>
    void expectMatrix(size_t index, const ColumnOf& columnOf) const
    {
        const std::vector<std::vector<double>> matrices = arraysOf("3 3 3");
        ASSERT_LT(index, matrices.size()) << m_path;
        ASSERT_EQ(matrices[index].size(), 9u) << m_path;
        for (size_t column = 0; column < 3; ++column) {
            const Published::Column expected = columnOf(column);
            for (size_t row = 0; row < 3; ++row) {
                EXPECT_NEAR(matrices[index][row * 3 + column], static_cast<double>(expected[row]), 1e-11)
                    << m_path << " " << row << column;
            }
        }
    }

    /// Takes the pixels of one line through the transform.
    void render(Morvane::PixelFormat in, const void* source, Morvane::PixelFormat out, void* destination,
                uint32_t pixels) const
    {
        Morvane::TransformPtr transform, finalized;
        Morvane::MorvaneStatus status = Morvane::loadColorTransform(m_path.c_str(), transform);
        if (status) {
            status = Morvane::finalize(transform, in, out, Morvane::RENDERER_CPU, Morvane::OPTIMIZER_DEFAULT,
                                       Morvane::RESOLVE_GRAPHICS_MONITOR, finalized);
        }
        if (status) status = finalized->apply(source, Morvane::ROI(0, 0, pixels, 1), destination);
        EXPECT_TRUE(status) << status.getErrorMessage();
    }

    /// One pixel of floats.
    std::array<float, 4> render(std::array<float, 4> pixel) const
    {
        std::array<float, 4> result{};
        render(Morvane::PF_RGBA_32f, pixel.data(), Morvane::PF_RGBA_32f, result.data(), 1);
        return result;
    }

private:
    std::string m_path;
};
