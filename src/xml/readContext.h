#pragma once

#include "xml/elementStack.h"

#include <cstdint>
#include <string>

namespace Color::Xml::Reader {

/// Where a read has got to: what its elements may know of it.
struct ReadContext
{
    std::string fileName; ///< empty for a text in memory
    int32_t line = 0;     ///< the line just fed, from 1; stays 0 for a text in memory
    ElementStack stack;

    /// The file name as messages show it.
    std::string getShownFileName() const { return fileName.empty() ? "File name not specified" : fileName; }
};

} // namespace Color::Xml::Reader
