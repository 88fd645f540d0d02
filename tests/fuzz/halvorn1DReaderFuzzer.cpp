#include "utils/exception.h"
#include "xml/halvorn1DReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

/// A read either gives a transform or raises a Color::Exception and leaves nothing behind.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    std::istringstream stream(std::string(reinterpret_cast<const char*>(data), size));
    Color::Halvorn1DReader reader;
    bool failed = false;
    try {
        reader.readStream(stream, "fuzz.lut");
    } catch (const Color::Exception&) {
        failed = true;
    }
    if (failed == (reader.getTransform() != nullptr)) std::abort();
    return 0;
}
