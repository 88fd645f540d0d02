#pragma once

#include "transform/transform.h"

#include <string>

namespace Color {

/// Reads one kind of file into a transform. A reader can be used again; each read starts clean.
class IOReader
{
public:
    IOReader() = default;
    IOReader(const IOReader&) = delete;
    IOReader& operator=(const IOReader&) = delete;
    virtual ~IOReader();

    /// The name shown to people.
    virtual const char* getName() const = 0;
    /// Reads a whole text held in memory.
    virtual void readBuffer(const char* text) = 0;
    virtual void readFile(const std::string& fileName) = 0;
    /// What the last read built; null, or for some readers an empty transform, after a failure.
    virtual ColorTransformPtr getTransform() const = 0;
    /// Judges by the extension alone.
    virtual bool isFileSupported(const std::string& fileName) const = 0;
};

} // namespace Color
