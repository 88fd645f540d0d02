// A host in 40 lines: takes a transform from a ctf file, or makes one, and sends a small image through it.
#include <morvane/morvane.h>

#include <cstdio>

// Every call that can fail returns a status, which is true on success.
static bool check(const Morvane::MorvaneStatus& status, const char* task)
{
    if (!status) std::fprintf(stderr, "host: cannot %s: %s\n", task, status.getErrorMessage());
    return status;
}

// One stop brighter.
static Morvane::MorvaneStatus makeBrighter(Morvane::TransformPtr& result)
{
    const float matrix[9] = {2, 0, 0, 0, 2, 0, 0, 0, 2};
    const float offsets[3] = {0, 0, 0};
    return Morvane::CreateMatrixTransform(Morvane::BIT_DEPTH_32f, Morvane::BIT_DEPTH_32f, matrix, offsets, false,
                                          result);
}

int main(int argc, char** argv)
{
    Morvane::TransformPtr transform;
    if (!check(argc > 1 ? Morvane::loadColorTransform(argv[1], transform) : makeBrighter(transform),
               "make the transform") ||
        !check(Morvane::finalize(transform, Morvane::PF_RGB_8i, Morvane::PF_RGBA_32f, Morvane::RENDERER_CPU,
                                 Morvane::OPTIMIZER_DEFAULT, Morvane::RESOLVE_BROADCAST_MONITOR, transform),
               "finalize the transform")) {
        return 1;
    }

    const unsigned char source[3][3] = {{0, 51, 102}, {153, 204, 255}, {255, 0, 51}};
    float destination[3][4];
    if (!check(transform->apply(source, Morvane::ROI(0, 0, 3, 1), destination), "convert the image")) return 1;
    for (int i = 0; i < 3; ++i) {
        std::printf("%3d %3d %3d -> %.3f %.3f %.3f %.3f\n", source[i][0], source[i][1], source[i][2], destination[i][0],
                    destination[i][1], destination[i][2], destination[i][3]);
    }
}
