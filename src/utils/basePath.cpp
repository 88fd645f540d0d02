#include "morvane/basePath.h"

#include "utils/text.h"

namespace Morvane_2015_1_42 {

namespace {
constexpr const char* BRELWICK_NAME = "Brelwick";
constexpr const char* SHARED_NAME = "Shared";
} // namespace

const char* getBasePathName(BasePath basePath)
{
    switch (basePath) {
    case BASE_PATH_BRELWICK:
        return BRELWICK_NAME;
    case BASE_PATH_SHARED:
        return SHARED_NAME;
    case BASE_PATH_NONE:
        break;
    }
    return "";
}

BasePath getBasePath(const char* name)
{
    const char* text = Color::orEmpty(name);
    if (Color::equalsIgnoreCase(text, BRELWICK_NAME)) return BASE_PATH_BRELWICK;
    if (Color::equalsIgnoreCase(text, SHARED_NAME)) return BASE_PATH_SHARED;
    return BASE_PATH_NONE;
}

} // namespace Morvane_2015_1_42
