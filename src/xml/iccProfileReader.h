#pragma once

#include "xml/ioReader.h"

#include <string_view>

namespace Color {

/// Reads ICC profiles of RGB displays that consist of a matrix and tone curves into the transform from the profile
/// connection space to the device. Its input is CIE XYZ for a white of D65, its output 16 bit codes of the device.
class ICCProfileReader : public IOReader
{
public:
    const char* getName() const override;
    /// Throws 0x3080001: profiles are read from files alone.
    void readBuffer(const char* text) override;
    /// Throws 0x3080007 on a file that cannot be read, else what readProfile() throws.
    void readFile(const std::string& fileName) override;
    ColorTransformPtr getTransform() const override;
    bool isFileSupported(const std::string& fileName) const override;

    /// Reads a profile held in memory; the name is for messages. Throws 0x3080007 on a profile that is no sound one,
    /// 0x3080004 on one without a matrix and curves, 0x3080002 and 0x3080003 on spaces other than XYZ and RGB,
    /// 0x3080005 and 0x3080006 on a matrix or curve that cannot be understood, and what the ops throw on numbers that
    /// they cannot take.
    void readProfile(std::string_view bytes, const std::string& fileName);

    /// The extensions of the format, without their dots.
    static constexpr const char* kExtensions[] = {"icm", "icc", "pf"};

private:
    ColorTransformPtr m_transform;
};

} // namespace Color
