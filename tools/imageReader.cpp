#include "imageReader.h"

#include "failure.h"
#include "imageLayout.h"
#include "quietLibraries.h"

#include <filesystem>
#include <new>

namespace Command {

ImageReader::ImageReader(const std::string& path) : m_path(path)
{
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored)) throw cannotRead(path, "no such file");
    if (std::filesystem::is_directory(path, ignored)) throw cannotRead(path, "it is a directory");

    const QuietLibraries quiet;
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);
    m_input = OIIO::ImageInput::open(path, &config);
    if (!m_input) throw cannotRead(path, OIIO::geterror());
    for (int subimage = 0; m_input->seek_subimage(subimage, 0); ++subimage) {
        m_specs.push_back(m_input->spec());
        if (m_specs.back().deep) throw cannotRead(path, "deep images are not supported");
        if (m_input->seek_subimage(subimage, 1)) throw cannotRead(path, "files with MIP-map levels are not supported");
    }
    m_input->geterror(); // the failed seek that ended the loop
    if (m_specs.empty()) throw cannotRead(path, "it holds no image");
}

std::vector<unsigned char> ImageReader::readPixels(int subimage)
{
    const OIIO::ImageSpec& spec = m_specs[static_cast<size_t>(subimage)];
    std::vector<unsigned char> pixels;
    try {
        pixels.resize(spec.image_bytes(true));
    } catch (const std::exception&) {
        throw cannotRead(m_path, "not enough memory for its pixels");
    }
    const QuietLibraries quiet;
    if (!m_input->read_image(subimage, 0, 0, spec.nchannels, transferType(spec), pixels.data())) {
        throw cannotRead(m_path, m_input->geterror());
    }
    return pixels;
}

} // namespace Command
