#pragma once

#include "xml/ioReader.h"

#include <istream>

namespace Color {

/// Reads Halvorn 1D LUTs into one LUT 1D op.
class Halvorn1DReader : public IOReader
{
public:
    const char* getName() const override;
    /// Throws 0x3090001: the format is read from files alone.
    void readBuffer(const char* text) override;
    /// Throws 0x3090002 on a file that is no such LUT.
    void readFile(const std::string& fileName) override;
    ColorTransformPtr getTransform() const override;
    bool isFileSupported(const std::string& fileName) const override;

    /// Reads a text that is already open. Where its header does not tell the output depth, the name may.
    void readStream(std::istream& stream, const std::string& fileName);

    /// The extension of the format, without its dot.
    static const char* getExtension();

private:
    ColorTransformPtr m_transform;
};

} // namespace Color
