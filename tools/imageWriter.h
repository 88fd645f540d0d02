#pragma once

#include "temporaryFile.h"

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

#include <memory>
#include <string>
#include <vector>

namespace Command {

/// Writes an image file of one or more subimages: whole, or not at all. Everything throws Failure with
/// ExitCode::WRITE.
class ImageWriter
{
public:
    /// Finds the writer for the extension. Nothing is written yet.
    explicit ImageWriter(const std::string& path);

    std::string getFormatName() const { return m_output->format_name(); }

    /// Whether the format has a feature of OpenImageIO's list, such as "alpha" or "tiles".
    bool supports(const char* feature) const { return m_output->supports(feature) != 0; }

    /// Creates the file; several subimages need the feature "multiimage". The first one is then to be written.
    void open(const std::vector<OIIO::ImageSpec>& specs);

    /// The subimage to be written as the file will hold it: the format may have changed types that it cannot store.
    const OIIO::ImageSpec& getSpec() const { return m_output->spec(); }

    /// Writes the pixels of the present subimage, in the layout of getSpec(), and goes on to the next one.
    void writePixels(const std::vector<unsigned char>& pixels);

    /// Closes the file, makes sure that it can be read, and puts it into its place.
    void commit();

private:
    [[noreturn]] void fail(const std::string& why) const;
    void check(bool succeeded) const;

    std::string m_path;
    std::unique_ptr<TemporaryFile> m_file;
    std::unique_ptr<OIIO::Filesystem::IOFile> m_stream; // used by m_output
    std::unique_ptr<OIIO::ImageOutput> m_output;
    std::vector<OIIO::ImageSpec> m_specs;
    size_t m_present = 0;
};

} // namespace Command
