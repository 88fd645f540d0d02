/// A host that tells where its home is, and what each alias that ships makes of a pixel: homeHost

#include "morvane/morvane.h"

#include <cstdio>
#include <initializer_list>

namespace {

using namespace Morvane;

MorvaneStatus render(const char* alias, float (&pixel)[3])
{
    TransformPtr transform, finalized;
    MorvaneStatus status = CreateReferenceTransformFromAlias(BIT_DEPTH_32f, BIT_DEPTH_32f, alias, transform);
    if (status) {
        status = finalize(transform, PF_RGB_32f, PF_RGB_32f, RENDERER_CPU, OPTIMIZER_DEFAULT, RESOLVE_BROADCAST_MONITOR,
                          finalized);
    }
    if (status) status = finalized->apply(pixel, ROI(0, 0, 1, 1), pixel);
    return status;
}

} // namespace

int main()
{
    std::printf("%s\n%s\n", getConfigFilePath(), getSystemColorTransformPath());
    for (const char* alias : {"graphicsMonitor", "broadcastMonitor", "defaultLook", "defaultGamutMap",
                              "SceneToOutputBridge", "OutputToSceneBridge"}) {
        float pixel[3] = {0.9505f, 1.f, 1.089f}; // display white as CIE XYZ
        if (const MorvaneStatus status = render(alias, pixel); !status) {
            std::fprintf(stderr, "%s: %s\n", alias, status.getErrorMessage());
            return 1;
        }
        std::printf("%s %.2f %.2f %.2f\n", alias, static_cast<double>(pixel[0]), static_cast<double>(pixel[1]),
                    static_cast<double>(pixel[2]));
    }
    return 0;
}
