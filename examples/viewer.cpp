// A viewer: a display curve behind exposure and contrast controls, which change between frames without finalizing
// again.
#include <morvane/morvane.h>

#include <cmath>
#include <cstdio>
#include <initializer_list>
#include <vector>

static bool check(const Morvane::MorvaneStatus& status, const char* task)
{
    if (!status) std::fprintf(stderr, "viewer: cannot %s: %s\n", task, status.getErrorMessage());
    return status;
}

// A curve of gamma 2.2 from light to 8-bit codes. Its entries are in the scale of the output depth.
static Morvane::MorvaneStatus makeDisplayCurve(Morvane::TransformPtr& result)
{
    std::vector<float> codes(4096);
    for (unsigned i = 0; i < codes.size(); ++i)
        codes[i] = 255 * std::pow(i / 4095.f, 1 / 2.2f);
    return Morvane::Create1DLutTransformFromFloat(Morvane::BIT_DEPTH_32f, Morvane::BIT_DEPTH_8i, 4096, codes.data(),
                                                  codes.data(), codes.data(), Morvane::HALF_FLAGS_NONE, result);
}

static bool showFrame(const Morvane::TransformPtr& transform, double stops)
{
    Morvane::DynamicProperty exposure(Morvane::DynamicProperty::EXPOSURE);
    exposure.setValue(stops);
    if (!check(transform->setDynamicProperty(exposure), "set the exposure")) return false;

    const float light[3][4] = {{0, 0, 0, 1}, {0.18f, 0.18f, 0.18f, 1}, {1, 0.5f, 0.25f, 1}};
    unsigned char codes[3][3];
    if (!check(transform->apply(light, Morvane::ROI(0, 0, 3, 1), codes), "convert the frame")) return false;
    std::printf("%+.0f:", stops);
    for (int i = 0; i < 3; ++i)
        std::printf("  %3d %3d %3d", codes[i][0], codes[i][1], codes[i][2]);
    std::printf("\n");
    return true;
}

int main()
{
    Morvane::TransformPtr controls, curve, transform;
    if (!check(Morvane::createStockTransform(Morvane::STOCK_TRANSFORM_RAW, controls), "make the controls") ||
        !check(makeDisplayCurve(curve), "make the curve") ||
        !check(Morvane::concatenateTransforms(controls, curve, transform), "join the two") ||
        !check(Morvane::finalize(transform, Morvane::PF_RGBA_32f, Morvane::PF_RGB_8i, Morvane::RENDERER_CPU,
                                 Morvane::OPTIMIZER_DEFAULT | Morvane::OPTIMIZER_KEEP_DYNAMIC,
                                 Morvane::RESOLVE_BROADCAST_MONITOR, transform),
               "finalize the transform")) {
        return 1;
    }
    for (const double stops : {0.0, 1.0, -2.0}) {
        if (!showFrame(transform, stops)) return 1;
    }
}
