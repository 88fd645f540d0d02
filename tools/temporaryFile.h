#pragma once

#include <string>

namespace Command {

/// A file that is written beside its final place and takes it at the end, in one step. It is removed when it does not
/// get that far: by the destructor, or by the signals SIGINT, SIGTERM and SIGHUP. One at a time in a process.
class TemporaryFile
{
public:
    /// Chooses a name with the extension of the final one. An existing final file is left alone until commit(); when it
    /// is a symbolic link, its target is what is replaced. Throws std::runtime_error when the final place is taken by
    /// something that is no file, or when its directory does not exist.
    explicit TemporaryFile(const std::string& finalPath);
    ~TemporaryFile();
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::string& getPath() const { return m_path; }

    /// Takes the final place, with the permissions of the file that was there. Throws std::runtime_error.
    void commit();

private:
    std::string m_finalPath;
    std::string m_path;
};

/// Lets the three signals remove the temporary file before they end the process, and a file size limit show as a
/// failed write. To be called once, at the start.
void installSignalHandlers();

} // namespace Command
