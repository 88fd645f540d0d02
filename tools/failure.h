#pragma once

#include <stdexcept>
#include <string>

namespace Command {

/// What the process returns. The numbers are promised in `morvane --help`.
enum class ExitCode : int
{
    OK = 0,
    CONVERSION = 1, ///< something failed while an image was converted
    USAGE = 2,      ///< wrong usage
    TRANSFORM = 3,  ///< a transform or the preferences cannot be loaded or used
    READ = 4,       ///< an image cannot be read
    WRITE = 5,      ///< an image, a transform, the preferences or the standard output cannot be written
    WARNINGS = 6,   ///< a transform that was checked can be used, but warnings were logged
};

/// A failure with its exit code. The text is what follows "morvane: " on standard error, always one line.
class Failure : public std::runtime_error
{
public:
    /// Line breaks in the text become "; ".
    Failure(ExitCode code, const std::string& text);

    ExitCode getCode() const { return m_code; }

private:
    ExitCode m_code;
};

/// The text in one line: each run of line breaks and the blanks around it becomes "; ", and none is left at the ends.
std::string oneLine(const std::string& text);

/// "cannot read image 'x.exr': why" and its siblings.
Failure cannotRead(const std::string& path, const std::string& why);
Failure cannotWrite(const std::string& path, const std::string& why);

/// Prints the failure on standard error.
void report(const Failure& failure);

} // namespace Command
