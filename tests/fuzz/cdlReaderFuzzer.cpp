#include "utils/exception.h"
#include "xml/cdlReader.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

/// A read either gives transforms of one op each or raises a Color::Exception and leaves nothing behind.
template <class Read>
void check(Read&& read)
{
    Color::CDLReader reader;
    bool failed = false;
    try {
        read(reader);
    } catch (const Color::Exception&) {
        failed = true;
    }
    if (failed != reader.getTransformList().empty()) std::abort();
    for (const Color::ColorTransformPtr& transform : reader.getTransformList()) {
        if (transform->getOpList().size() != 1) std::abort();
    }
}

} // namespace

/// Reads the input as a text in memory, and line by line as a file.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    check([&](Color::CDLReader& reader) { reader.readBuffer(text.c_str()); });
    check([&](Color::CDLReader& reader) {
        std::istringstream stream(text);
        reader.readStream(stream, "fuzz.cdl");
    });
    return 0;
}
