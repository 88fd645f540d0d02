#include "work.h"

#include <cstdio>
#include <cstdlib>

namespace OCIO = OCIO_NAMESPACE;
namespace M = Morvane;

void require(const M::MorvaneStatus& status)
{
    if (status) return;
    std::fprintf(stderr, "morvane-bench: %s\n", status.getErrorMessage());
    std::abort();
}

M::TransformPtr transformOf(const std::string& opElements)
{
    const std::string text = "<ProcessList id=\"bench\" version=\"1.6\">" + opElements + "</ProcessList>";
    M::TransformPtr result;
    require(M::loadColorTransformFromBuffer(text.c_str(), result));
    return result;
}

Work chainOf(const std::string& name, const std::vector<Work>& works)
{
    return {name,
            [=] {
                M::TransformPtr chain;
                for (const Work& work : works) {
                    if (chain) {
                        M::TransformPtr longer;
                        require(M::concatenateTransforms(chain, work.ours(), longer));
                        chain = longer;
                    } else {
                        chain = work.ours();
                    }
                }
                return chain;
            },
            [=]() -> OCIO::TransformRcPtr {
                const auto group = OCIO::GroupTransform::Create();
                for (const Work& work : works) {
                    group->appendTransform(work.peer());
                }
                return group;
            }};
}
