#include "renderer/genericRenderer.h"

#include "renderer/CPURenderer.h"
#include "utils/exception.h"

#include <boost/make_shared.hpp>
#include <cstdlib>
#include <cstring>

namespace Rendering {

namespace {

struct RendererName
{
    const char* text;
    RendererCode code;
};

constexpr RendererName kRendererNames[] = {
    {"CPU", RENDERER_CODE_CPU},
    {"OCIO", RENDERER_CODE_OCIO},
    {"GPU", RENDERER_CODE_GPU},
    {"OCIO_GPU", RENDERER_CODE_OCIO_GPU},
};

/// The code that the environment asks for, or else the request.
int getRequest(const char* variable, int request)
{
    const char* value = std::getenv(variable);
    if (!value) return request;
    for (const RendererName& name : kRendererNames) {
        if (std::strcmp(value, name.text) == 0) return name.code;
    }
    return request;
}

[[noreturn]] void refuse(const char* kind)
{
    Color::raise(Color::LogCategory::RENDERER_ALL, Color::ErrorIds::RENDERER_INVALID_CHOICE, kind);
}

} // namespace

GenericRenderer::~GenericRenderer() = default;

GenericCPURendererPtr createCPURenderer(int request)
{
    switch (getRequest("MORVANE_CPU_RENDERER", request)) {
    case RENDERER_CODE_DEFAULT:
    case RENDERER_CODE_CPU:
        return boost::make_shared<CPURenderer>();
    case RENDERER_CODE_GPU:
    case RENDERER_CODE_OCIO_GPU:
        refuse("GPU");
    default:
        return {};
    }
}

GenericRendererPtr createGPURenderer(int request)
{
    switch (getRequest("MORVANE_GPU_RENDERER", request)) {
    case RENDERER_CODE_CPU:
    case RENDERER_CODE_OCIO:
        refuse("CPU");
    case RENDERER_CODE_OCIO_GPU:
        refuse("OCIO GPU");
    default:
        return {};
    }
}

} // namespace Rendering
