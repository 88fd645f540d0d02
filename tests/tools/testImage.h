#pragma once

#include <OpenImageIO/imageio.h>

#include <functional>
#include <string>
#include <vector>

/// A small image in memory with all values as double, in the scale of the file's samples: codes for integers.
struct TestImage
{
    OIIO::ImageSpec spec;
    std::vector<double> values; ///< channels interleaved

    double at(int x, int y, int channel) const
    {
        return values[static_cast<size_t>((y * spec.width + x) * spec.nchannels + channel)];
    }
};

/// The value of a sample.
using SampleFunction = std::function<double(int x, int y, int channel)>;

TestImage makeImage(const OIIO::ImageSpec& spec, const SampleFunction& value);

/// Writes and reads image files, with alpha as it is stored; several images become the subimages of one file.
void writeImages(const std::string& path, const std::vector<TestImage>& images);
std::vector<TestImage> readImages(const std::string& path);

inline void writeImage(const std::string& path, const TestImage& image) { writeImages(path, {image}); }
/// The only image of a file.
TestImage readImage(const std::string& path);

/// Expects that every sample has the value that the function gives.
void expectSamples(const TestImage& image, const SampleFunction& expected);
