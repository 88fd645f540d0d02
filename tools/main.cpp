#include "applyCommand.h"
#include "checkCommand.h"
#include "convertCommand.h"
#include "formatsCommand.h"
#include "infoCommand.h"
#include "prefsCommand.h"
#include "temporaryFile.h"

#include "morvane/morvane.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <thread>

namespace {

using namespace Command;

const char* const kFooter =
    "Exit codes:\n"
    "  0  everything was done\n"
    "  1  something failed while an image was converted\n"
    "  2  wrong usage; nothing was done\n"
    "  3  a transform or the preferences cannot be loaded or used\n"
    "  4  an image cannot be read\n"
    "  5  an image, a transform, the preferences or the standard output cannot be written\n"
    "  6  a transform that was checked has warnings, and none has errors\n"
    "With several images the code is that of the first failure; the others are still converted.";

const char* const kApplyFooter =
    "Several images need a pattern as OUT: a run of '#', '%d' or '%04d' stands for the frame number, the last digits\n"
    "in the input's name, and '{stem}' for the input's name without directory and extension.";

void logNothing(Morvane::LogLevel, const char*) {}

void logToStandardError(Morvane::LogLevel, const char* line) { std::fprintf(stderr, "%s\n", oneLine(line).c_str()); }

void addApply(CLI::App& app, ApplyOptions& options, std::string& depth)
{
    CLI::App* apply = app.add_subcommand("apply", "Convert images through transforms");
    apply->add_option("-t,--transform", options.transforms, "Transform file; give several to apply them in order")
        ->type_name("FILE")
        ->allow_extra_args(false);
    apply->add_option("files", options.files, "The input images and the output, after further transforms")
        ->type_name("IN... OUT");
    apply->add_flag("--inverse", options.inverse, "Undo the transforms instead");
    apply->add_option("--out-depth", depth, "Sample depth of the output; without it that of the input")
        ->type_name("DEPTH")
        ->check(CLI::IsMember({"8i", "10i", "12i", "16i", "16f", "32f"}));
    apply->add_option("--threads", options.threads, "Threads to use; without it one per processor")
        ->type_name("N")
        ->check(CLI::Range(1u, 1024u));
    apply->add_flag("--dry-run", options.dryRun, "Check everything and say what would be done, but write nothing");
    apply->footer(kApplyFooter);
}

CLI::App* addInfo(CLI::App& app, std::vector<std::string>& files, InfoOptions& options)
{
    CLI::App* info = app.add_subcommand("info", "Show what transforms hold");
    info->add_option("files", files, "Transform files")->type_name("FILE...")->required();
    CLI::Option* json = info->add_flag("--json", options.json, "As JSON");
    info->add_flag("--picture", options.picture, "With pictures of curves and cubes, as on a terminal")->excludes(json);
    CLI::Option* optimized = info->add_flag("--optimized", options.optimized,
                                            "The operators before and after the optimizer, and what it did");
    info->add_option("--threshold", options.threshold, "The lowest score that the optimizer acts on; without it 90")
        ->type_name("N")
        ->check(CLI::Range(0u, 0x7fffffffu))
        ->needs(optimized);
    info->add_flag("--keep-dynamic", options.keepDynamic, "Optimize no operators whose values may change")
        ->needs(optimized);
    return info;
}

/// What `morvane prefs` is given.
struct PrefsArguments
{
    PrefsOptions options;
    std::vector<std::string> setting; ///< none, or an alias and a path
    std::string basePath;
};

CLI::App* addPrefs(CLI::App& app, PrefsArguments& arguments)
{
    CLI::App* prefs = app.add_subcommand("prefs", "Show the paths and the aliases of the preferences, or set an alias");
    prefs->add_flag("--json", arguments.options.json, "As JSON");
    CLI::Option* alias =
        prefs->add_option("--alias", arguments.options.alias, "Show this alias alone")->type_name("NAME");
    CLI::Option* setting =
        prefs->add_option("--set-alias", arguments.setting, "Let the alias stand for a transform, and save")
            ->type_name("NAME PATH")
            ->expected(2)
            ->excludes(alias);
    prefs->add_option("--base", arguments.basePath, "What a relative path starts from")
        ->type_name("BASE")
        ->check(CLI::IsMember({"Brelwick", "Shared"}, CLI::ignore_case))
        ->needs(setting);
    return prefs;
}

ExitCode run(PrefsArguments& arguments)
{
    const std::vector<std::string>& setting = arguments.setting;
    if (!setting.empty()) {
        arguments.options.setting = {setting[0], setting[1], Morvane::getBasePath(arguments.basePath.c_str())};
    }
    return runPrefs(arguments.options);
}

ExitCode run(int argc, char** argv)
{
    CLI::App app("Converts images through colour transforms.", "morvane");
    app.footer(kFooter);
    app.set_version_flag("--version", std::string("morvane ") + Morvane::getVersionString());
    app.require_subcommand(1);
    app.fallthrough();
    bool verbose = false;
    app.add_flag("--verbose", verbose, "Log what the library does on standard error");

    ApplyOptions applyOptions;
    applyOptions.threads = std::max(1u, std::thread::hardware_concurrency());
    std::string depth;
    addApply(app, applyOptions, depth);

    std::string convertInput, convertOutput;
    CLI::App* convert = app.add_subcommand("convert", "Write a transform of any format as a ctf file");
    convert->add_option("input", convertInput, "Transform file")->type_name("IN")->required();
    convert->add_option("output", convertOutput, "The ctf file; one that exists is replaced")
        ->type_name("OUT.ctf")
        ->required();

    std::vector<std::string> transformFiles;
    InfoOptions infoOptions;
    const CLI::App* info = addInfo(app, transformFiles, infoOptions);
    PrefsArguments prefsArguments;
    const CLI::App* prefs = addPrefs(app, prefsArguments);

    bool json = false;
    CLI::App* check = app.add_subcommand("check", "Read transforms and tell what is wrong with them, line by line");
    check->add_option("files", transformFiles, "Transform files")->type_name("FILE...")->required();
    check->add_flag("--json", json, "As JSON");
    CLI::App* formats = app.add_subcommand("formats", "List the transform, pixel and image formats");
    formats->add_flag("--json", json, "As JSON");

    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& wish) { // --help, --version
        app.exit(wish);
        return ExitCode::OK;
    } catch (const CLI::ParseError& error) {
        throw Failure(ExitCode::USAGE, std::string(error.what()) + " (see morvane --help)");
    }

    const Morvane::LoggerFunction logger = verbose ? logToStandardError : logNothing;
    Morvane::setLoggerFunction(logger);
    if (convert->parsed()) return runConvert(convertInput, convertOutput);
    if (info->parsed()) return runInfo(transformFiles, infoOptions);
    if (prefs->parsed()) return run(prefsArguments);
    if (check->parsed()) return runCheck(transformFiles, json, logger);
    if (formats->parsed()) return runFormats(json);
    applyOptions.outputDepth = Morvane::getBitDepth(depth.c_str());
    return runApply(applyOptions);
}

/// What was printed may still be on its way to a disk that is full.
void checkStandardOutput()
{
    const bool isFlushed = std::fflush(stdout) == 0;
    if (!isFlushed || std::ferror(stdout)) throw Failure(ExitCode::WRITE, "cannot write to standard output");
}

} // namespace

int main(int argc, char** argv)
{
    installSignalHandlers();
    try {
        const ExitCode code = run(argc, argv);
        checkStandardOutput();
        return static_cast<int>(code);
    } catch (const Failure& failure) {
        report(failure);
        return static_cast<int>(failure.getCode());
    } catch (const std::exception& error) {
        report({ExitCode::CONVERSION, error.what()});
        return static_cast<int>(ExitCode::CONVERSION);
    }
}
