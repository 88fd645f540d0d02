#include "xml/ioReader.h"

namespace Color {

IOReader::~IOReader() = default;

} // namespace Color
