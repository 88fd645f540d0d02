#include "utils/exception.h"
#include "xml/iccProfileReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

/// A read either gives a transform or raises a Color::Exception and leaves nothing behind.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    Color::ICCProfileReader reader;
    bool failed = false;
    try {
        reader.readProfile(std::string_view(reinterpret_cast<const char*>(data), size), "fuzz.icc");
    } catch (const Color::Exception&) {
        failed = true;
    }
    if (failed == (reader.getTransform() != nullptr)) std::abort();
    return 0;
}
