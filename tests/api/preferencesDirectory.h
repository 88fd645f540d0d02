#pragma once

#include "tests/api/hostTools.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <unistd.h>

/// Ends a process of a test: what failed goes to the error stream, which the parent shows.
[[noreturn]] inline void exitWithFailures()
{
    const testing::TestResult& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
    for (int i = 0; i < result.total_part_count(); ++i) {
        const testing::TestPartResult& part = result.GetTestPartResult(i);
        if (part.failed()) std::fprintf(stderr, "%s:%d: %s\n", part.file_name(), part.line_number(), part.message());
    }
    std::exit(testing::Test::HasFailure() ? 1 : 0);
}

/// A process loads the preferences once, so each case runs in a process of its own.
template <class Body>
void inOwnProcess(Body&& body)
{
    EXPECT_EXIT(
        {
            body();
            exitWithFailures();
        },
        testing::ExitedWithCode(0), "");
}

/// A directory with a config file, which the environment names.
class PreferencesDirectory : public testing::Test
{
protected:
    PreferencesDirectory()
        : m_directory(std::filesystem::temp_directory_path() / ("morvanePreferences" + std::to_string(::getpid()))),
          m_config("MORVANE_OVERRIDE_CONFIG_PATH", getPath().c_str()),
          m_home("MORVANE_OVERRIDE_SYSTEM_TRANSFORM_LOCATION", ""), m_shared("MORVANE_OVERRIDE_SHARED_PATH", "")
    {
        std::filesystem::create_directories(m_directory);
        write("<MorvaneConfig><SharedHome dir='/site'/><ReferenceTable><Ref alias='grade' path='g.ctf' "
              "basePath='Shared'/></ReferenceTable></MorvaneConfig>\n");
    }
    ~PreferencesDirectory() override { std::filesystem::remove_all(m_directory); }

    std::string getPath() const { return (m_directory / "morvaneConfig.xml").string(); }
    std::string getDirectory() const { return m_directory.string(); }
    /// Writes the config file.
    void write(const std::string& text) const { std::ofstream(getPath()) << text; }
    /// Writes a file of the directory, and gives its full path.
    std::string writeFile(const std::string& name, const std::string& text) const
    {
        const std::filesystem::path path = m_directory / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << text;
        return path.string();
    }
    std::string getContent() const
    {
        std::ifstream file(getPath());
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    std::filesystem::path m_directory;
    ScopedEnvironment m_config;
    ScopedEnvironment m_home;
    ScopedEnvironment m_shared;
};
