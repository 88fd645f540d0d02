#include "testImage.h"

#include <Imath/half.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace {

/// As a whole in one type where there is one; OpenImageIO's other way is not safe for tiled TIFF files.
OIIO::TypeDesc transferType(const OIIO::ImageSpec& spec)
{
    return spec.channelformats.empty() ? spec.format : OIIO::TypeDesc(OIIO::TypeUnknown);
}

void check(bool succeeded, const std::string& what)
{
    if (!succeeded) throw std::runtime_error(what);
}

template <class T>
void store(unsigned char* place, double value)
{
    const T sample = static_cast<T>(value);
    std::memcpy(place, &sample, sizeof sample);
}

template <class T>
double load(const unsigned char* place)
{
    T sample{};
    std::memcpy(&sample, place, sizeof sample);
    return static_cast<double>(sample);
}

void storeSample(unsigned char* place, OIIO::TypeDesc type, double value)
{
    if (type == OIIO::TypeUInt8) return store<uint8_t>(place, value);
    if (type == OIIO::TypeUInt16) return store<uint16_t>(place, value);
    if (type == OIIO::TypeUInt32) return store<uint32_t>(place, value);
    if (type == OIIO::TypeHalf) return store<uint16_t>(place, Imath::half(static_cast<float>(value)).bits());
    check(type == OIIO::TypeFloat, "no such sample type in tests");
    store<float>(place, value);
}

double loadSample(const unsigned char* place, OIIO::TypeDesc type)
{
    if (type == OIIO::TypeUInt8) return load<uint8_t>(place);
    if (type == OIIO::TypeUInt16) return load<uint16_t>(place);
    if (type == OIIO::TypeUInt32) return load<uint32_t>(place);
    if (type == OIIO::TypeHalf) {
        Imath::half value;
        value.setBits(static_cast<uint16_t>(load<uint16_t>(place)));
        return static_cast<double>(static_cast<float>(value));
    }
    check(type == OIIO::TypeFloat, "no such sample type in tests");
    return static_cast<double>(load<float>(place));
}

size_t sampleOffset(const OIIO::ImageSpec& spec, size_t index)
{
    const size_t channels = static_cast<size_t>(spec.nchannels);
    const int channel = static_cast<int>(index % channels);
    return index / channels * spec.pixel_bytes(true) + spec.pixel_bytes(0, channel, true);
}

} // namespace

TestImage makeImage(const OIIO::ImageSpec& spec, const SampleFunction& value)
{
    TestImage image{spec, {}};
    for (int y = 0; y < spec.height; ++y) {
        for (int x = 0; x < spec.width; ++x) {
            for (int c = 0; c < spec.nchannels; ++c)
                image.values.push_back(value(x, y, c));
        }
    }
    return image;
}

void writeImages(const std::string& path, const std::vector<TestImage>& images)
{
    std::vector<OIIO::ImageSpec> specs;
    for (const TestImage& image : images)
        specs.push_back(image.spec);
    const auto output = OIIO::ImageOutput::create(path);
    check(output != nullptr, "no writer for " + path);
    const int count = static_cast<int>(specs.size());
    for (size_t i = 0; i < images.size(); ++i) {
        const bool opened = i > 0       ? output->open(path, specs[i], OIIO::ImageOutput::AppendSubimage)
                            : count > 1 ? output->open(path, count, specs.data())
                                        : output->open(path, specs[0]);
        check(opened, output->geterror());
        std::vector<unsigned char> pixels(specs[i].image_bytes(true));
        for (size_t s = 0; s < images[i].values.size(); ++s) {
            const int channel = static_cast<int>(s % static_cast<size_t>(specs[i].nchannels));
            storeSample(&pixels[sampleOffset(specs[i], s)], specs[i].channelformat(channel), images[i].values[s]);
        }
        check(output->write_image(transferType(specs[i]), pixels.data()), output->geterror());
    }
    check(output->close(), output->geterror());
}

std::vector<TestImage> readImages(const std::string& path)
{
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);
    const auto input = OIIO::ImageInput::open(path, &config);
    check(input != nullptr, OIIO::geterror());
    std::vector<TestImage> images;
    for (int i = 0; input->seek_subimage(i, 0); ++i) {
        TestImage image{input->spec(), {}};
        std::vector<unsigned char> pixels(image.spec.image_bytes(true));
        check(input->read_image(i, 0, 0, image.spec.nchannels, transferType(image.spec), pixels.data()),
              input->geterror());
        const size_t samples = image.spec.image_pixels() * static_cast<size_t>(image.spec.nchannels);
        for (size_t s = 0; s < samples; ++s) {
            const int channel = static_cast<int>(s % static_cast<size_t>(image.spec.nchannels));
            image.values.push_back(loadSample(&pixels[sampleOffset(image.spec, s)], image.spec.channelformat(channel)));
        }
        images.push_back(image);
    }
    input->geterror();
    return images;
}

TestImage readImage(const std::string& path)
{
    std::vector<TestImage> images = readImages(path);
    check(images.size() == 1, path + " holds several images");
    return images[0];
}

void expectSamples(const TestImage& image, const SampleFunction& expected)
{
    for (int y = 0; y < image.spec.height; ++y) {
        for (int x = 0; x < image.spec.width; ++x) {
            for (int c = 0; c < image.spec.nchannels; ++c) {
                ASSERT_EQ(image.at(x, y, c), expected(x, y, c)) << "x " << x << ", y " << y << ", channel " << c;
            }
        }
    }
}
