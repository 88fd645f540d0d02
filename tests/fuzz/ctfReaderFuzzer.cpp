#include "utils/exception.h"
#include "xml/xmlTransformReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

/// A read either gives a transform or raises a Color::Exception and leaves nothing behind.
template <class Read>
void check(Read&& read)
{
    Color::XMLTransformReader reader;
    bool failed = false;
    try {
        read(reader);
    } catch (const Color::Exception&) {
        failed = true;
    }
    if (failed == (reader.getTransform() != nullptr)) std::abort();
}

} // namespace

/// Reads the input as a text in memory, and line by line as a file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    check([&](Color::XMLTransformReader& reader) { reader.readBuffer(text.c_str()); });
    check([&](Color::XMLTransformReader& reader) {
        std::istringstream stream(text);
        reader.readStream(stream, "fuzz.ctf");
    });
    return 0;
}
