#pragma once

#include "xml/ioReader.h"

#include <istream>
#include <memory>
#include <vector>

namespace Color {

/// Reads the three XML forms of the ASC Color Decision List: a list, a collection or a single colour correction.
class CDLReader : public IOReader
{
public:
    using Transforms = std::vector<ColorTransformPtr>;

    CDLReader();
    ~CDLReader() override;

    const char* getName() const override;
    void readBuffer(const char* text) override;
    void readFile(const std::string& fileName) override;
    /// The first correction; after a failure an empty transform, which all readers share.
    ColorTransformPtr getTransform() const override;
    bool isFileSupported(const std::string& fileName) const override;
    /// A transform of one CDL op for each correction, in the order of the file; empty after a failure.
    virtual const Transforms& getTransformList() const;

    /// Reads, as a file, a text that is open at its start and can be read twice; the name is for messages.
    void readStream(std::istream& stream, const std::string& fileName);

private:
    class Impl;
    /// Runs a read and what is checked after it.
    template <class Body>
    void read(Body&& body);

    std::unique_ptr<Impl> m_impl;
};

} // namespace Color
