#include "convertCommand.h"

#include "temporaryFile.h"
#include "transformChain.h"

#include "morvane/morvane.h"

#include <filesystem>
#include <stdexcept>

namespace fs = std::filesystem;

namespace Command {

namespace {

void checkNames(const std::string& input, const std::string& output)
{
    const std::string extension = std::string(".") + Morvane::getColorTransformFileExtension();
    if (fs::path(output).extension() != extension) {
        throw Failure(ExitCode::USAGE, "convert writes '" + extension + "' files, but the output is '" + output + "'");
    }
    std::error_code error; // files that do not exist are not the same
    if (fs::equivalent(input, output, error)) {
        throw Failure(ExitCode::USAGE, "the output '" + output + "' is the input");
    }
}

/// A message about the temporary file, told of the final one.
std::string renamed(std::string message, const std::string& temporary, const std::string& final)
{
    for (size_t at = 0; (at = message.find(temporary, at)) != std::string::npos; at += final.size())
        message.replace(at, temporary.size(), final);
    return message;
}

} // namespace

ExitCode runConvert(const std::string& input, const std::string& output)
{
    checkNames(input, output);
    const Morvane::TransformPtr transform = loadTransform(input);
    const auto cannotWriteTransform = [&](const std::string& why) {
        return Failure(ExitCode::WRITE, "cannot write transform '" + output + "': " + why);
    };
    try {
        TemporaryFile file(output);
        const Morvane::MorvaneStatus status = Morvane::saveColorTransform(file.getPath().c_str(), true, transform);
        if (!status) throw cannotWriteTransform(renamed(messageOf(status), file.getPath(), output));
        file.commit();
    } catch (const Failure&) {
        throw;
    } catch (const std::runtime_error& error) {
        throw cannotWriteTransform(error.what());
    }
    return ExitCode::OK;
}

} // namespace Command
