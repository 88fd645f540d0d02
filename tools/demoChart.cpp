/// Makes the pictures of the demonstration:
///   morvane-demo-chart OUT.exr              a high dynamic range chart in ACES2065-1
///   morvane-demo-chart preview IN OUT.png   a linear picture as a display wants it, encoded after IEC 61966-2-1

#include "colorimetry.h"

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace Colorimetry;

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr double kBackground = 0.18; ///< the grey of an average scene
constexpr double kBrightest = 16.0;  ///< four stops above diffuse white

/// The 24 patches of the classic colour rendition chart, row by row, in their published sRGB codes of 8 bits.
constexpr int kPatches[24][3] = {
    {115, 82, 68},   {194, 150, 130}, {98, 122, 157},  {87, 108, 67},   {133, 128, 177}, {103, 189, 170},
    {214, 126, 44},  {80, 91, 166},   {193, 90, 99},   {94, 60, 108},   {157, 188, 64},  {224, 163, 46},
    {56, 61, 150},   {70, 148, 73},   {175, 54, 60},   {231, 199, 31},  {187, 86, 149},  {8, 133, 161},
    {243, 243, 242}, {200, 200, 200}, {160, 160, 160}, {122, 122, 121}, {85, 85, 85},    {52, 52, 52},
};

/// Red, yellow, green, cyan, blue, magenta.
constexpr double kSaturated[6][3] = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 1, 1}, {0, 0, 1}, {1, 0, 1}};

/// A colour of the chart, in ACES2065-1, at a place in its field; u and v run from 0 at the top left to 1.
using Paint = std::function<Vector3(double u, double v)>;

struct Field
{
    int x, y, width, height;
};

class Picture
{
public:
    Picture() : m_pixels(size_t{kWidth} * kHeight * 3, static_cast<float>(kBackground)) {}

    void paint(const Field& field, const Paint& colour)
    {
        for (int y = 0; y < field.height; ++y) {
            for (int x = 0; x < field.width; ++x) {
                const Vector3 c = colour(x / (field.width - 1.0), y / (field.height - 1.0));
                const size_t at = (static_cast<size_t>(field.y + y) * kWidth + static_cast<size_t>(field.x + x)) * 3;
                for (size_t i = 0; i < 3; ++i)
                    m_pixels[at + i] = static_cast<float>(c[i]);
            }
        }
    }

    void fill(const Field& field, const Vector3& colour)
    {
        paint(field, [&](double, double) { return colour; });
    }

    const float* data() const { return m_pixels.data(); }

private:
    std::vector<float> m_pixels;
};

Vector3 grey(double value) { return {value, value, value}; }

/// Full colour of a hue from 0 to 1, red to red, in linear components.
Vector3 hueColour(double hue)
{
    const auto component = [&](double offset) {
        const double distance = std::fabs(std::fmod(hue * 6.0 + offset, 6.0) - 3.0);
        return std::clamp(distance - 1.0, 0.0, 1.0);
    };
    return {component(0.0), component(4.0), component(2.0)};
}

void paintPatches(Picture& picture, const Matrix3& fromBT709)
{
    constexpr int size = 150, gap = 12, left = 60, top = 48;
    for (int i = 0; i < 24; ++i) {
        Vector3 linear{};
        for (size_t c = 0; c < 3; ++c)
            linear[c] = linearFromEncodedSRGB(kPatches[i][c] / 255.0);
        picture.fill({left + i % 6 * (size + gap), top + i / 6 * (size + gap), size, size},
                     multiply(fromBT709, linear));
    }
}

void paintSaturated(Picture& picture, const Matrix3& fromBT709, const Matrix3& fromBT2020)
{
    constexpr int width = 120, height = 120, gap = 12, left = 1092, top = 48;
    int row = 0;
    for (const Matrix3& matrix : {fromBT709, fromBT2020}) {
        for (int i = 0; i < 6; ++i) {
            const Vector3 rgb = {kSaturated[i][0], kSaturated[i][1], kSaturated[i][2]};
            picture.fill({left + i * (width + gap), top + row * (height + gap), width, height}, multiply(matrix, rgb));
        }
        ++row;
    }
}

/// Hues from left to right; from the top down from black over full colour to white.
void paintHueSweep(Picture& picture, const Matrix3& fromBT709)
{
    picture.paint({1092, 324, 780, 360}, [&](double u, double v) {
        Vector3 rgb = hueColour(u);
        for (double& c : rgb)
            c = v < 0.5 ? c * v * 2.0 : c + (1.0 - c) * (v * 2.0 - 1.0);
        return multiply(fromBT709, rgb);
    });
}

void paintGreys(Picture& picture)
{
    constexpr int left = 60, width = 1812, height = 84;
    picture.paint({left, 720, width, height}, [](double u, double) { return grey(u); });
    picture.paint({left, 828, width, height}, [](double u, double) { return grey(u * kBrightest); });
    // Fifteen steps of one stop, from 2^-10 to 16.
    picture.paint({left, 936, width, height}, [](double u, double) {
        const double step = std::min(std::floor(u * 15.0), 14.0);
        return grey(std::exp2(step - 10.0));
    });
}

void check(bool succeeded, const std::string& path, const std::string& why)
{
    if (!succeeded) throw std::runtime_error("'" + path + "': " + why);
}

void write(const std::string& path, const OIIO::ImageSpec& spec, const OIIO::TypeDesc& type, const void* pixels)
{
    const std::unique_ptr<OIIO::ImageOutput> output = OIIO::ImageOutput::create(path);
    check(output != nullptr, path, OIIO::geterror());
    check(output->open(path, spec) && output->write_image(type, pixels) && output->close(), path, output->geterror());
}

void makeChart(const std::string& path)
{
    const Matrix3 fromBT709 = adaptedRGBFromRGB(kACES2065_1, kBT709);
    const Matrix3 fromBT2020 = adaptedRGBFromRGB(kACES2065_1, kBT2020);
    Picture picture;
    paintPatches(picture, fromBT709);
    paintSaturated(picture, fromBT709, fromBT2020);
    paintHueSweep(picture, fromBT709);
    paintGreys(picture);

    OIIO::ImageSpec spec(kWidth, kHeight, 3, OIIO::TypeHalf);
    spec.attribute("compression", "zip");
    spec.attribute("ImageDescription", "Colour chart, scene-linear ACES2065-1, greys from 0 to 16");
    spec.attribute("Software", "morvane-demo-chart");
    spec.attribute("FramesPerSecond", OIIO::TypeRational, std::vector<int>{24, 1}.data());
    write(path, spec, OIIO::TypeFloat, picture.data());
}

void makePreview(const std::string& from, const std::string& to)
{
    const std::unique_ptr<OIIO::ImageInput> input = OIIO::ImageInput::open(from);
    check(input != nullptr, from, OIIO::geterror());
    const OIIO::ImageSpec& spec = input->spec();
    check(spec.nchannels >= 3, from, "it has no three channels");
    std::vector<float> linear(spec.image_pixels() * 3);
    check(input->read_image(0, 0, 0, 3, OIIO::TypeFloat, linear.data()), from, input->geterror());
    std::vector<unsigned char> codes(linear.size());
    std::transform(linear.begin(), linear.end(), codes.begin(), [](float value) {
        return static_cast<unsigned char>(std::lround(encodedSRGBFromLinear(static_cast<double>(value)) * 255.0));
    });
    write(to, OIIO::ImageSpec(spec.width, spec.height, 3, OIIO::TypeUInt8), OIIO::TypeUInt8, codes.data());
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    try {
        if (arguments.size() == 1) {
            makeChart(arguments[0]);
        } else if (arguments.size() == 3 && arguments[0] == "preview") {
            makePreview(arguments[1], arguments[2]);
        } else {
            std::fputs("usage: morvane-demo-chart OUT.exr\n       morvane-demo-chart preview IN OUT.png\n", stderr);
            return 2;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "morvane-demo-chart: %s\n", error.what());
        return 1;
    }
    return 0;
}
