#pragma once

#include <string>
#include <vector>

namespace Command {

/// One conversion: from file to file.
struct FilePair
{
    std::string input;
    std::string output;
};

/// True when the name holds a place for the frame number (a run of '#', "%d", "%04d") or "{stem}".
bool isOutputPattern(const std::string& output);

/// The output name of an input. "{stem}" becomes the input's file name without directory and extension; '#', "%d" and
/// "%04d" become the frame number, the last run of digits in the stem, filled with zeros to the width of the run or
/// of the field; "%%" becomes "%". A name that is no pattern is returned as it is.
/// Throws Failure with ExitCode::USAGE when a frame number is wanted and the input has none.
std::string outputName(const std::string& pattern, const std::string& input);

/// The conversions that a command line asks for. Throws Failure with ExitCode::USAGE when several inputs have no
/// pattern, when two outputs would be one file, when an output is the input of another conversion, or when it is a
/// directory. An output that is its own input is fine.
std::vector<FilePair> pairFiles(const std::vector<std::string>& inputs, const std::string& output);

} // namespace Command
