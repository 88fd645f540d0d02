#pragma once

#include <boost/filesystem/operations.hpp>
#include <fstream>
#include <string>

/// A directory that is gone with its content at the end of the test.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
        : m_path(boost::filesystem::canonical(boost::filesystem::temp_directory_path()) /
                 boost::filesystem::unique_path("morvane-%%%%%%%%%%%%"))
    {
        boost::filesystem::create_directories(m_path);
    }
    ~TemporaryDirectory()
    {
        boost::system::error_code ignored;
        boost::filesystem::remove_all(m_path, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    std::string getPath(const std::string& name) const { return (m_path / name).generic_string(); }

    /// Writes a file, with the directories on the way to it, and returns its path.
    std::string write(const std::string& name, const std::string& text = "") const
    {
        const boost::filesystem::path path = m_path / name;
        boost::filesystem::create_directories(path.parent_path());
        std::ofstream(path.string()) << text;
        return path.generic_string();
    }

private:
    boost::filesystem::path m_path;
};
