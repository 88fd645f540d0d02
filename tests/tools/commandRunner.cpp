#include "commandRunner.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

/// For the thread sanitizer: OpenImageIO is not built for it, and what passes through the queues of its threads would
/// be taken for races. Our own code is watched all the same.
extern "C" const char* __tsan_default_options() { return "ignore_noninstrumented_modules=1"; }

namespace {

std::string contentOf(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

fs::path makeDirectory()
{
    std::string name =
        (fs::temp_directory_path() / "morvane-tool-").string() + std::string(6, 'X'); // replaced by mkdtemp
    if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
    return name;
}

/// A file for a stream of the program, outside its working directory.
fs::path streamFile(const fs::path& directory, const char* suffix) { return directory.string() + suffix; }

void redirect(int descriptor, const fs::path& path)
{
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0 || dup2(file, descriptor) < 0) _exit(126);
}

} // namespace

Outcome runProgram(const std::string& program, const std::vector<std::string>& arguments, const fs::path& directory,
                   const std::function<void(pid_t)>& watch, const std::function<void()>& prepare)
{
    std::vector<char*> argv = {const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments)
        argv.push_back(const_cast<char*>(argument.c_str()));
    argv.push_back(nullptr);
    const fs::path output = streamFile(directory, ".stdout"), error = streamFile(directory, ".stderr");

    const pid_t process = fork();
    if (process == 0) {
        redirect(STDOUT_FILENO, output);
        redirect(STDERR_FILENO, error);
        if (chdir(directory.c_str()) != 0) _exit(126);
        // OpenImageIO loses a text when libpng leaves a failed read by a jump. Leaks of the library are looked for by
        // the tests that call it.
        setenv("LSAN_OPTIONS", "detect_leaks=0", 0);
        setenv("TSAN_OPTIONS", __tsan_default_options(), 0);
        if (prepare) prepare();
        execv(program.c_str(), argv.data());
        _exit(127);
    }
    if (process < 0) throw std::runtime_error("cannot start " + program);
    if (watch) watch(process);
    int status = 0;
    waitpid(process, &status, 0);
    Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, WIFSIGNALED(status) ? WTERMSIG(status) : 0,
                    contentOf(output), contentOf(error)};
    fs::remove(output);
    fs::remove(error);
    return outcome;
}

CommandTest::CommandTest() : m_directory(makeDirectory()) {}

CommandTest::~CommandTest() { fs::remove_all(m_directory); }

Outcome CommandTest::morvane(const std::vector<std::string>& arguments) const
{
    return runProgram(MORVANE_COMMAND, arguments, m_directory, nullptr,
                      [&] { setenv("MORVANE_OVERRIDE_CONFIG_PATH", m_directory.c_str(), 1); });
}

void CommandTest::expectSuccess(const std::vector<std::string>& arguments) const
{
    const Outcome outcome = morvane(arguments);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.error, "");
}

void CommandTest::expectFailure(const std::vector<std::string>& arguments, int exitCode, const std::string& error) const
{
    const Outcome outcome = morvane(arguments);
    EXPECT_EQ(outcome.exitCode, exitCode);
    EXPECT_EQ(outcome.error, error);
    EXPECT_EQ(outcome.output, "");
}

std::vector<std::string> CommandTest::files() const
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(m_directory)) {
        if (entry.is_regular_file()) names.push_back(entry.path().lexically_relative(m_directory).string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

void CommandTest::writePreferences(const std::string& aliases) const
{
    writeText("morvaneConfig.xml",
              "<MorvaneConfig>\n<ReferenceTable>\n" + aliases + "\n</ReferenceTable>\n</MorvaneConfig>\n");
}

void CommandTest::writeText(const std::string& name, const std::string& text) const
{
    std::ofstream file(path(name), std::ios::binary);
    file << text;
}

std::string CommandTest::readBytes(const std::string& name) const { return contentOf(path(name)); }

void CommandTest::writeMatrix(const std::string& name, const std::string& values) const
{
    writeText(name, "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                    "<ProcessList id=\"test\" name=\"test\" version=\"1.3\">\n"
                    "<Matrix inBitDepth=\"32f\" outBitDepth=\"32f\"><Array dim=\"3 3 3\">" +
                        values + "</Array></Matrix>\n</ProcessList>\n");
}
