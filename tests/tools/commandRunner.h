#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <sys/types.h>

/// What a finished program left behind.
struct Outcome
{
    int exitCode; ///< -1 when a signal ended it
    int signal;   ///< 0 when it ended by itself
    std::string output;
    std::string error;
};

/// Runs a program with the directory as its working directory and waits for its end. While it runs, watch() is called
/// with its process id; prepare() is called in the new process before the program starts.
Outcome runProgram(const std::string& program, const std::vector<std::string>& arguments,
                   const std::filesystem::path& directory, const std::function<void(pid_t)>& watch = nullptr,
                   const std::function<void()>& prepare = nullptr);

/// Tests of the command: each has an empty directory of its own, where the command runs and looks for its preferences.
class CommandTest : public ::testing::Test
{
protected:
    CommandTest();
    ~CommandTest() override;

    /// Runs morvane with the arguments.
    Outcome morvane(const std::vector<std::string>& arguments) const;

    /// Runs morvane and expects that it ends with exit code 0 and nothing on standard error.
    void expectSuccess(const std::vector<std::string>& arguments) const;

    /// Runs morvane and expects the exit code, these very lines on standard error, and nothing on standard output.
    void expectFailure(const std::vector<std::string>& arguments, int exitCode, const std::string& error) const;

    std::string path(const std::string& name) const { return (m_directory / name).string(); }

    /// The names of all files in the directory, sorted, with those below it.
    std::vector<std::string> files() const;

    /// Writes preferences with these aliases, given as the elements of a table.
    void writePreferences(const std::string& aliases) const;

    void writeText(const std::string& name, const std::string& text) const;
    std::string readBytes(const std::string& name) const;

    /// Writes a transform of one 3 by 3 matrix, row by row, without any scale between depths.
    void writeMatrix(const std::string& name, const std::string& values) const;

    /// R, G, B become G/2, R/4, 2B: exact in binary, and every channel tells where it came from.
    void writeMixer(const std::string& name) const { writeMatrix(name, "0 0.5 0  0.25 0 0  0 0 2"); }

    const std::filesystem::path m_directory;
};
