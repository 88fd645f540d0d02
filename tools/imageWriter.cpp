#include "imageWriter.h"

#include "failure.h"
#include "imageLayout.h"
#include "quietLibraries.h"

#include <stdexcept>

namespace Command {

namespace {

/// Reads the last row or tile of the last subimage. A disk that filled up shows here at the latest, also where the
/// format's writer has not looked at its last write.
bool isReadable(const std::string& path, size_t subimages)
{
    const std::unique_ptr<OIIO::ImageInput> input = OIIO::ImageInput::open(path);
    if (!input || !input->seek_subimage(static_cast<int>(subimages) - 1, 0)) return false;
    const OIIO::ImageSpec& spec = input->spec();
    std::vector<unsigned char> pixels;
    const int lastY = spec.y + spec.height - 1, lastZ = spec.z + spec.depth - 1;
    if (spec.tile_width != 0) {
        pixels.resize(spec.tile_bytes(true));
        const int x = spec.x + (spec.width - 1) / spec.tile_width * spec.tile_width;
        const int y = spec.y + (spec.height - 1) / spec.tile_height * spec.tile_height;
        const int z = spec.z + (spec.depth - 1) / spec.tile_depth * spec.tile_depth;
        return input->read_tile(x, y, z, transferType(spec), pixels.data());
    }
    pixels.resize(spec.scanline_bytes(true));
    return input->read_scanline(lastY, lastZ, transferType(spec), pixels.data());
}

} // namespace

ImageWriter::ImageWriter(const std::string& path) : m_path(path), m_output(OIIO::ImageOutput::create(path))
{
    if (!m_output) fail(OIIO::geterror());
}

void ImageWriter::fail(const std::string& why) const { throw cannotWrite(m_path, why); }

void ImageWriter::check(bool succeeded) const
{
    if (!succeeded) fail(m_output->geterror());
}

void ImageWriter::open(const std::vector<OIIO::ImageSpec>& specs)
{
    try {
        m_file = std::make_unique<TemporaryFile>(m_path);
    } catch (const std::runtime_error& error) {
        fail(error.what());
    }
    const QuietLibraries quiet;
    m_specs = specs;
    std::string name = m_file->getPath();
    if (getFormatName() == "dpx") {
        // Its header holds the name of the file, which must not be the temporary one.
        m_stream = std::make_unique<OIIO::Filesystem::IOFile>(name, OIIO::Filesystem::IOProxy::Write);
        if (!m_stream->opened()) fail(m_stream->error());
        m_output->set_ioproxy(m_stream.get());
        name = m_path;
    }
    const int count = static_cast<int>(m_specs.size());
    check(count == 1 ? m_output->open(name, m_specs[0]) : m_output->open(name, count, m_specs.data()));
}

void ImageWriter::writePixels(const std::vector<unsigned char>& pixels)
{
    const QuietLibraries quiet;
    check(m_output->write_image(transferType(getSpec()), pixels.data()));
    ++m_present;
    if (m_present == m_specs.size()) return;
    check(m_output->open(m_file->getPath(), m_specs[m_present], OIIO::ImageOutput::AppendSubimage));
}

void ImageWriter::commit()
{
    const QuietLibraries quiet;
    check(m_output->close());
    if (m_stream) m_stream->close();
    if (!isReadable(m_file->getPath(), m_specs.size())) {
        const std::string why = OIIO::geterror();
        fail("the file is not complete" + (why.empty() ? "" : ": " + why));
    }
    try {
        m_file->commit();
    } catch (const std::runtime_error& error) {
        fail(error.what());
    }
}

} // namespace Command
