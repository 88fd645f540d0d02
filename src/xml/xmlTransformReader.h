#pragma once

#include "xml/ioReader.h"

#include <istream>
#include <memory>

namespace Color {

/// Reads ctf documents: XML with the root ProcessList.
class XMLTransformReader : public IOReader
{
public:
    XMLTransformReader();
    ~XMLTransformReader() override;

    const char* getName() const override;
    void readBuffer(const char* text) override;
    void readFile(const std::string& fileName) override;
    ColorTransformPtr getTransform() const override;
    bool isFileSupported(const std::string& fileName) const override;

    /// Reads, as a file, a text that is already open; the name is for messages.
    void readStream(std::istream& stream, const std::string& fileName);

    /// The extension of the format, without its dot.
    static const char* getExtension();

private:
    class Impl;
    void checkFile(const std::string& fileName) const;

    std::unique_ptr<Impl> m_impl;
};

} // namespace Color
