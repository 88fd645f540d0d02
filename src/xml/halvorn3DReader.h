#pragma once

#include "xml/ioReader.h"

#include <istream>

namespace Color {

/// Reads Halvorn 3D LUTs, cubes of 17 points to an edge, into one LUT 3D op.
class Halvorn3DReader : public IOReader
{
public:
    const char* getName() const override;
    /// Throws 0x30a0001: the format is read from files alone.
    void readBuffer(const char* text) override;
    /// Throws 0x30a0002 on a file that is no such LUT, 0x30a0003 when a value is too large for any depth and 0x30a0004
    /// when there are too few rows or too many.
    void readFile(const std::string& fileName) override;
    ColorTransformPtr getTransform() const override;
    bool isFileSupported(const std::string& fileName) const override;

    /// Reads a text that is already open; the name is for messages.
    void readStream(std::istream& stream, const std::string& fileName);

    /// The extension of the format, without its dot.
    static const char* getExtension();

private:
    ColorTransformPtr m_transform;
};

} // namespace Color
