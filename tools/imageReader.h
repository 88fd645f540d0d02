#pragma once

#include <OpenImageIO/imageio.h>

#include <memory>
#include <string>
#include <vector>

namespace Command {

/// Reads an image file with all its subimages, samples as they are stored: alpha is not multiplied into the colours.
/// Everything throws Failure with ExitCode::READ.
class ImageReader
{
public:
    /// Opens the file. Deep images and files with MIP-map levels are refused.
    explicit ImageReader(const std::string& path);

    /// One description per subimage.
    const std::vector<OIIO::ImageSpec>& getSpecs() const { return m_specs; }

    /// OpenImageIO's name of the file format.
    std::string getFormatName() const { return m_input->format_name(); }

    /// The pixels of a subimage in the layout of its description: channels interleaved, each in its own type.
    std::vector<unsigned char> readPixels(int subimage);

private:
    std::string m_path;
    std::unique_ptr<OIIO::ImageInput> m_input;
    std::vector<OIIO::ImageSpec> m_specs;
};

} // namespace Command
